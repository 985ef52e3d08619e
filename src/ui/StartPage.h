#pragma once

#include <QWidget>

namespace corvel {

// What stands in the place of the tabs' pages while there is no site: ways to begin.
class StartPage : public QWidget {
    Q_OBJECT

  public:
    // Covers place, which becomes its parent, at every size.
    explicit StartPage(QWidget& place);

  signals:
    void addWanted();
    void demoWanted();
    void guideWanted();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace corvel

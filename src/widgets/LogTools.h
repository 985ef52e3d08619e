#pragma once

#include <QPointer>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QStackedWidget;

namespace corvel {

class LogBox;

// The row of tools below a log: finds in it, holds, empties and saves it.
class LogTools : public QWidget {
    Q_OBJECT

  public:
    // pages: borrowed, must outlive the tools, which are for the LogBox on the page in front. caption: of the
    // box to find in it.
    LogTools(QStackedWidget& pages, const QString& caption);

    // Puts the focus where the text to find is typed.
    void startFind();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class Direction { stay, up, down };

    void followPage();
    void find(Direction direction);
    void stopFind();
    void save();

    QStackedWidget& pages_;
    QPointer<LogBox> log_;
    QLineEdit* txtFind_ = nullptr;
    QLabel* lblFind_ = nullptr;
    QCheckBox* chkLogHold_ = nullptr;
};

} // namespace corvel

#pragma once

#include <QObject>

#include <functional>

class QTimer;
class QWidget;

namespace corvel {

// Hides a window that a person minimises, for as long as something is there to bring it back by: where there
// is nothing, minimising minimises; and when that goes away, a hidden window shows itself again.
class MinimizeToTray : public QObject {
    Q_OBJECT

  public:
    // window: also the parent of this object. canReturn: whether, at this moment, a person could bring the
    // window back; it must stay callable while the window lives.
    MinimizeToTray(QWidget& window, std::function<bool()> canReturn);

  signals:
    void hidden();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void hide();
    void look();

    QWidget& window_;
    std::function<bool()> canReturn_;
    QTimer* watch_;
};

} // namespace corvel

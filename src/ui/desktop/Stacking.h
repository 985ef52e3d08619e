#pragma once

#include <QObject>

class QAbstractButton;
class QWidget;

namespace corvel {

// Puts window, a top-level widget, in the band of the windows that lie over all others, or takes it back into
// the normal one. A window that is shown stays shown where it is; one that was never shown is in its band
// when it comes up.
void setAlwaysOnTop(QWidget& window, bool onTop);

// Shows a window that is hidden or minimised as it was before, and puts it in front of all others with the
// keyboard, as far as the platform lets a program do so.
void bringToFront(QWidget& window);

// Keeps dialogs in reach of a window that lies over all others: while the button is checked, every dialog
// comes up in the same band.
class TopmostDialogs : public QObject {
    Q_OBJECT

  public:
    // whileChecked: borrowed, must outlive this object.
    explicit TopmostDialogs(const QAbstractButton& whileChecked, QObject* parent = nullptr);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    const QAbstractButton& whileChecked_;
};

} // namespace corvel

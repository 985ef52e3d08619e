#include "ui/desktop/Stacking.h"

#include <QWidget>
#include <QWindow>

namespace corvel {

// The way over the widget, setWindowFlags, would hide the window: here the widget is only told, and the
// window below it asks the window manager.
void setAlwaysOnTop(QWidget& window, bool onTop) {
    Qt::WindowFlags flags = window.windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, onTop);
    window.overrideWindowFlags(flags);
    if (QWindow* const native = window.windowHandle()) {
        native->setFlag(Qt::WindowStaysOnTopHint, onTop);
    }
}

void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace corvel

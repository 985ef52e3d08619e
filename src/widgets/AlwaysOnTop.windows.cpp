#include "widgets/AlwaysOnTop.h"

#include <QWidget>
#include <QWindow>

#include <windows.h>

namespace corvel {

// The way over the widget, setWindowFlags, would hide the window: here the widget is only told, for the case
// that Qt makes the window anew.
void setAlwaysOnTop(QWidget& window, bool onTop) {
    Qt::WindowFlags flags = window.windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, onTop);
    window.overrideWindowFlags(flags);
    if (window.windowHandle() != nullptr) {
        SetWindowPos(reinterpret_cast<HWND>(window.winId()), onTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0,
                     0, SWP_NOMOVE | SWP_NOSIZE);
    }
}

} // namespace corvel

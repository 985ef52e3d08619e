#include "ui/desktop/Stacking.h"

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

// Only the thread that has the foreground may give it away, so this one joins its input for a moment.
void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    const HWND handle = reinterpret_cast<HWND>(window.winId());
    if (IsIconic(handle) != FALSE) {
        ShowWindow(handle, SW_RESTORE);
    }
    const DWORD ownThread = GetCurrentThreadId();
    const DWORD otherThread = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
    const bool isJoined = otherThread != 0 && otherThread != ownThread &&
                          AttachThreadInput(ownThread, otherThread, TRUE) != FALSE;
    SetForegroundWindow(handle);
    if (isJoined) {
        AttachThreadInput(ownThread, otherThread, FALSE);
    }
    window.raise();
    window.activateWindow();
}

} // namespace corvel

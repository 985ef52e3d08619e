#include "net/qt/BringToFront.h"

#include <QWidget>

#include <windows.h>

namespace corvel {

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

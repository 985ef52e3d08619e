#include "ui/WindowDriver.h"

#include <QWidget>

#include <windows.h>

namespace corvel::test {

bool isTopmost(const QWidget& window) {
    const auto handle = reinterpret_cast<HWND>(window.winId());
    return window.isVisible() && (GetWindowLongPtrW(handle, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

} // namespace corvel::test

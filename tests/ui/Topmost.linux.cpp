#include "ui/WindowDriver.h"

#include <QWidget>
#include <QWindow>

namespace corvel::test {

bool isTopmost(const QWidget& window) {
    return window.isVisible() && window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint);
}

} // namespace corvel::test

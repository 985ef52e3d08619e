#include "net/qt/BringToFront.h"

#include <QWidget>

namespace corvel {

void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace corvel

#include "ui/desktop/mdlTrayIcon.h"

#include "ui/desktop/Desktop.h"

#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>
#include <QWindowStateChangeEvent>

#include <utility>

namespace corvel {

namespace {

constexpr int watchInterval = 1000; // milliseconds between two looks while the window is hidden

} // namespace

mdlTrayIcon::mdlTrayIcon(QObject* parent) : QObject(parent) {}

mdlTrayIcon::~mdlTrayIcon() = default;

void mdlTrayIcon::TrayAdd(const QIcon& image, const QString& tip) {
    picTrayIcon_ = std::make_unique<QSystemTrayIcon>(image, this);
    picTrayIcon_->setObjectName(QStringLiteral("picTrayIcon"));
    picTrayIcon_->setToolTip(tip);
    picTrayIcon_->setContextMenu(menu_);
    connect(picTrayIcon_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger) {
                    emit clicked();
                }
            });
    picTrayIcon_->show();
}

void mdlTrayIcon::TrayModify(const QIcon& image, const QString& tip) {
    if (!picTrayIcon_) {
        return;
    }
    if (picTrayIcon_->icon().cacheKey() != image.cacheKey()) {
        picTrayIcon_->setIcon(image);
    }
    if (picTrayIcon_->toolTip() != tip) {
        picTrayIcon_->setToolTip(tip);
    }
}

void mdlTrayIcon::TrayDelete() {
    picTrayIcon_.reset();
}

void mdlTrayIcon::setMenu(QMenu* menu) {
    menu_ = menu;
    if (picTrayIcon_) {
        picTrayIcon_->setContextMenu(menu);
    }
}

bool mdlTrayIcon::isShown() const {
    return picTrayIcon_ && picTrayIcon_->isVisible() && QSystemTrayIcon::isSystemTrayAvailable();
}

void mdlTrayIcon::sayOnce(const QString& title, const QString& text) {
    if (picTrayIcon_) {
        picTrayIcon_->showMessage(title, text, picTrayIcon_->icon());
    }
}

MinimizeToTray::MinimizeToTray(QWidget& window, std::function<bool()> canReturn)
    : QObject(&window), window_(window), canReturn_(std::move(canReturn)), watch_(new QTimer(this)) {
    watch_->setObjectName(QStringLiteral("tmrTrayWatch"));
    watch_->setInterval(watchInterval);
    connect(watch_, &QTimer::timeout, this, &MinimizeToTray::look);
    window.installEventFilter(this);
}

bool MinimizeToTray::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowStateChange) {
        const bool wasMinimized =
            (static_cast<QWindowStateChangeEvent*>(event)->oldState() & Qt::WindowMinimized) != 0;
        if (!wasMinimized && window_.isMinimized()) {
            // The platform is in the middle of minimising; it is let finish first.
            QMetaObject::invokeMethod(this, &MinimizeToTray::hide, Qt::QueuedConnection);
        }
    }
    return QObject::eventFilter(watched, event);
}

// A dialog would stay behind without its window.
void MinimizeToTray::hide() {
    if (window_.isVisible() && window_.isMinimized() && QApplication::activeModalWidget() == nullptr &&
        canReturn_()) {
        window_.hide();
        watch_->start();
        emit hidden();
    }
}

void MinimizeToTray::look() {
    if (window_.isVisible()) {
        watch_->stop();
    } else if (!canReturn_()) {
        watch_->stop();
        window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
        window_.show();
    }
}

} // namespace corvel

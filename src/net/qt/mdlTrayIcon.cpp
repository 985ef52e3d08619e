#include "net/qt/mdlTrayIcon.h"

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

namespace corvel {

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

} // namespace corvel

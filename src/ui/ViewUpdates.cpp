#include "ui/ViewUpdates.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace corvel {

ViewUpdates::ViewUpdates(std::function<void(const ViewChange&)> show,
                         std::function<void(int, Dialog)> openDialog)
    : show_(std::move(show)), openDialog_(std::move(openDialog)) {
    QCoreApplication::instance()->installEventFilter(this);
}

void ViewUpdates::changed(const ViewChange& change) {
    if (changes_.empty()) {
        QMetaObject::invokeMethod(this, &ViewUpdates::tell, Qt::QueuedConnection);
    }
    // There are a handful of kinds, and rarely more than a few sites at a time.
    if (std::ranges::find(changes_, change) == changes_.end()) {
        changes_.push_back(change);
    }
}

void ViewUpdates::tell() {
    for (const ViewChange& change : std::exchange(changes_, {})) {
        show_(change);
    }
}

bool ViewUpdates::eventFilter(QObject* watched, QEvent* event) {
    if (!changes_.empty() && event->type() != QEvent::SockAct) {
        tell();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace corvel

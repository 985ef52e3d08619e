#include "ui/desktop/Stacking.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEvent>

namespace corvel {

TopmostDialogs::TopmostDialogs(const QAbstractButton& whileChecked, QObject* parent)
    : QObject(parent), whileChecked_(whileChecked) {
    qApp->installEventFilter(this);
}

bool TopmostDialogs::eventFilter(QObject* watched, QEvent* event) {
    // The event comes before the dialog is on the screen.
    if (event->type() == QEvent::Show && whileChecked_.isChecked()) {
        if (auto* const dialog = qobject_cast<QDialog*>(watched)) {
            setAlwaysOnTop(*dialog, true);
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace corvel

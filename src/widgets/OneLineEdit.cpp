#include "widgets/OneLineEdit.h"

#include <QFocusEvent>

#include <algorithm>

namespace corvel {

namespace {

bool isLineBreak(QChar character) {
    return character == QChar::LineFeed || character == QChar::CarriageReturn;
}

} // namespace

QValidator::State LineBreakDropper::validate(QString& text, int& cursor) const {
    const auto beforeCursor = text.cbegin() + std::clamp<qsizetype>(cursor, 0, text.size());
    cursor -= static_cast<int>(std::count_if(text.cbegin(), beforeCursor, isLineBreak));
    text.removeIf(isLineBreak);
    return Acceptable;
}

OneLineEdit::OneLineEdit(QWidget* parent) : QLineEdit(parent) {
    setValidator(new LineBreakDropper(this));
}

void OneLineEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    isFirstClick_ = selectsAllOnFocus_ && event->reason() == Qt::MouseFocusReason;
    if (selectsAllOnFocus_ && event->reason() != Qt::PopupFocusReason) {
        selectAll();
    }
}

void OneLineEdit::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (isFirstClick_ && !hasSelectedText()) {
        selectAll();
    }
    isFirstClick_ = false;
}

} // namespace corvel

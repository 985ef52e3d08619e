#include "widgets/LinkLabel.h"

#include "widgets/Colours.h"
#include "widgets/TextConversion.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace corvel {

LinkLabel::LinkLabel(const char* name, const QString& tip) : ElidedLabel(name), tip_(tip) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setForegroundRole(QPalette::Link);
    setAccessibleDescription(tip);
    hide();
}

void LinkLabel::showText(const QString& shown) {
    const QString before = text();
    ElidedLabel::showText(shown);
    if (text() != before) {
        QPalette colours = palette();
        colours.setColor(QPalette::Link,
                         readableOn(colours.color(QPalette::Window), colours.color(QPalette::Link)));
        setPalette(colours);
        setToolTip(toolTipOf(shown + QLatin1Char('\n') + tip_));
        setVisible(!shown.isEmpty());
    }
}

void LinkLabel::paintEvent(QPaintEvent* event) {
    ElidedLabel::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        QStyleOptionFocusRect frame;
        frame.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
    }
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit clicked();
    }
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        emit clicked();
    } else {
        ElidedLabel::keyPressEvent(event);
    }
}

} // namespace corvel

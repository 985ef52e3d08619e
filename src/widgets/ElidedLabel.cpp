#include "widgets/ElidedLabel.h"

#include "widgets/TextConversion.h"

#include <QPainter>
#include <QStyle>

namespace corvel {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::showText(const QString& shown) {
    if (text() != shown) {
        setText(shown);
        setToolTip(toolTipOf(shown));
    }
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRect area = contentsRect();
    style()->drawItemText(&painter, area, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), palette(),
                          isEnabled(), fontMetrics().elidedText(text(), Qt::ElideRight, area.width()),
                          foregroundRole());
}

} // namespace corvel

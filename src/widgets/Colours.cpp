#include "widgets/Colours.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace corvel {

namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [less, more] = std::minmax({luminance(one), luminance(other)});
    return (more + 0.05) / (less + 0.05);
}

QColor readableOn(const QColor& ground, QColor wanted) {
    constexpr double enough = 4.5;
    constexpr float step = 0.02F;
    const bool isLighter = contrast(ground, Qt::white) > contrast(ground, Qt::black);
    const float end = isLighter ? 1.0F : 0.0F;
    while (contrast(ground, wanted) < enough && wanted.lightnessF() != end) {
        const float lightness = wanted.lightnessF() + (isLighter ? step : -step);
        wanted.setHslF(std::max(wanted.hslHueF(), 0.0F), wanted.hslSaturationF(),
                       std::clamp(lightness, 0.0F, 1.0F));
    }
    return wanted;
}

void drawFocus(QPainter& painter, const QRect& row, bool isSelected, const QWidget& list) {
    painter.setPen(
        QPen(list.palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text), 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(row.adjusted(1, 1, -2, -2));
}

namespace {

void keepHintsReadable() {
    const QPalette now = QApplication::palette();
    const QColor ground = now.color(QPalette::Base);
    const QColor text = now.color(QPalette::Text);
    const auto between = [](int one, int other) { return (one + other) / 2; };
    const QColor hint =
        readableOn(ground, {between(ground.red(), text.red()), between(ground.green(), text.green()),
                            between(ground.blue(), text.blue())});
    if (now.color(QPalette::PlaceholderText) != hint) {
        QPalette palette = now; // what nobody has set in it stays that of the desktop
        palette.setColor(QPalette::PlaceholderText, hint);
        QApplication::setPalette(palette); // and there are none for lists any more
    }
}

// Some styles mark the selected row of a list by a tint that leaves the text its own colour, while the
// palette still names another one, which what paints rows itself would take.
void fitSelection() {
    constexpr const char* lists = "QAbstractItemView";
    QPalette palette = QApplication::palette(lists);
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    if (QApplication::style()->name() == QLatin1String("windowsvista") &&
        palette.color(QPalette::Active, QPalette::HighlightedText) != text) {
        palette.setColor(QPalette::HighlightedText, text);
        QApplication::setPalette(palette, lists);
    }
}

} // namespace

void keepPaletteReadable() {
    keepHintsReadable();
    fitSelection();
}

} // namespace corvel

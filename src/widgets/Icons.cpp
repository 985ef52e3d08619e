#include "widgets/Icons.h"

#include <QIconEngine>
#include <QPainter>

#include <algorithm>
#include <functional>
#include <map>
#include <string>

namespace corvel {

namespace {

// Mid tones that are legible on a light and on a dark ground.
const QColor blue(0x3B, 0x7D, 0xC4);
const QColor amber(0xD9, 0xA4, 0x3B);
const QColor green(0x3C, 0x9D, 0x5B);
const QColor grey(0x8A, 0x8F, 0x98);

// Every picture is drawn on a field of 16 by 16.
using Draw = void (*)(QPainter&);

void outline(QPainter& painter, const QColor& color, int alpha) {
    painter.setPen(QPen(color, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QColor fill = color;
    fill.setAlpha(alpha);
    painter.setBrush(fill);
}

void drawDirectory(QPainter& painter) {
    outline(painter, amber, 110);
    painter.drawPolygon(QPolygonF({{1.5, 13}, {1.5, 3.5}, {6, 3.5}, {7.5, 5.5}, {14.5, 5.5}, {14.5, 13}}));
}

void drawPage(QPainter& painter, const QColor& color) {
    outline(painter, color, 40);
    painter.drawPolygon(QPolygonF({{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}}));
    painter.drawPolyline(QPolygonF({{9.5, 1.5}, {9.5, 4.5}, {12.5, 4.5}}));
}

void drawFile(QPainter& painter) {
    drawPage(painter, grey);
    painter.drawLine(QPointF(5.5, 8), QPointF(10.5, 8));
    painter.drawLine(QPointF(5.5, 11), QPointF(10.5, 11));
}

void drawLink(QPainter& painter) {
    drawPage(painter, blue);
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({{5.5, 12}, {5.5, 9}, {10, 9}}));
    painter.drawPolyline(QPolygonF({{8.3, 7}, {10.5, 9}, {8.3, 11}}));
}

void drawConnected(QPainter& painter) {
    outline(painter, green, 255);
    painter.drawEllipse(QPointF(8, 8), 4.5, 4.5);
}

void drawDisconnected(QPainter& painter) {
    outline(painter, grey, 0);
    painter.drawEllipse(QPointF(8, 8), 4.5, 4.5);
}

// A server with an arc of a connection over it.
void drawProgram(QPainter& painter) {
    outline(painter, blue, 60);
    painter.drawRoundedRect(QRectF(2, 8.5, 12, 5.5), 1.5, 1.5);
    painter.drawPoint(QPointF(11.5, 11.2));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(4.5, 4.5, 7, 7), 20 * 16, 140 * 16);
    painter.drawArc(QRectF(2.5, 1.5, 11, 11), 30 * 16, 120 * 16);
}

class Engine : public QIconEngine {
  public:
    explicit Engine(Draw draw) : draw_(draw) {}

    void paint(QPainter* painter, const QRect& area, QIcon::Mode mode, QIcon::State /*state*/) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setOpacity(mode == QIcon::Disabled ? 0.4 : 1.0);
        const double side = std::min(area.width(), area.height());
        painter->translate(area.center().x() + 0.5 - side / 2, area.center().y() + 0.5 - side / 2);
        painter->scale(side / 16, side / 16);
        draw_(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect({}, size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new Engine(draw_); }

  private:
    Draw draw_;
};

const std::map<std::string, Draw, std::less<>>& pictures() {
    static const std::map<std::string, Draw, std::less<>> table = {
        {"corvel", drawProgram}, {"directory", drawDirectory},      {"file", drawFile},
        {"link", drawLink},      {"site-connected", drawConnected}, {"site-disconnected", drawDisconnected},
    };
    return table;
}

} // namespace

QIcon icon(std::string_view name) {
    const auto found = pictures().find(name);
    return found == pictures().end() ? QIcon() : QIcon(new Engine(found->second));
}

} // namespace corvel

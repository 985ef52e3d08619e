#include "widgets/IconPictures.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>

#include <array>

namespace corvel {

namespace {

const QColor blue(0x3B, 0x7D, 0xC4);
const QColor amber(0xD9, 0xA4, 0x3B);
const QColor green(0x3C, 0x9D, 0x5B);
const QColor grey(0x8A, 0x8F, 0x98);
const QColor slate(0x6F, 0x82, 0x9C);
const QColor violet(0x8E, 0x6B, 0xC0);
const QColor red(0xC9, 0x5A, 0x50);

constexpr double lineWidth = 1.2;

void outline(QPainter& painter, const QColor& color, int alpha, double width = lineWidth) {
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QColor fill = color;
    fill.setAlpha(alpha);
    painter.setBrush(fill);
}

void line(QPainter& painter, const QColor& color, double width, const QPolygonF& points) {
    outline(painter, color, 0, width);
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(points);
}

// The browser's list.

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
    line(painter, blue, lineWidth, {{5.5, 12}, {5.5, 9}, {10, 9}});
    line(painter, blue, lineWidth, {{8.3, 7}, {10.5, 9}, {8.3, 11}});
}

// The sites list.

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

// The tabs.

void drawConsole(QPainter& painter) {
    outline(painter, slate, 40);
    painter.drawRoundedRect(QRectF(1.5, 2.5, 13, 11), 1.5, 1.5);
    line(painter, slate, 1.4, {{4.5, 5.5}, {7, 8}, {4.5, 10.5}});
    line(painter, slate, 1.4, {{8.5, 10.5}, {11.5, 10.5}});
}

void drawActivity(QPainter& painter) {
    line(painter, green, 1.4, {{1.5, 8.5}, {4.5, 8.5}, {6.5, 3}, {9.5, 13}, {11.5, 8.5}, {14.5, 8.5}});
}

void drawBrowser(QPainter& painter) {
    line(painter, slate, lineWidth, {{3.5, 5.5}, {3.5, 12.5}, {7.5, 12.5}});
    line(painter, slate, lineWidth, {{3.5, 8}, {7.5, 8}});
    outline(painter, amber, 110);
    painter.drawRect(QRectF(1.5, 1.5, 5, 4));
    painter.drawRect(QRectF(8.5, 6.5, 6, 3));
    painter.drawRect(QRectF(8.5, 11.5, 6, 3));
}

void drawStatistics(QPainter& painter) {
    line(painter, slate, lineWidth, {{1.5, 1.5}, {1.5, 14.5}, {14.5, 14.5}});
    outline(painter, blue, 90);
    painter.drawRect(QRectF(4, 9, 2, 3.5));
    painter.drawRect(QRectF(8, 6, 2, 6.5));
    painter.drawRect(QRectF(12, 3, 2, 9.5));
}

// A head over shoulders, in the middle of the given width around x.
void drawPerson(QPainter& painter, double x, const QColor& color) {
    outline(painter, color, 70);
    painter.drawEllipse(QPointF(x, 5), 2.7, 2.7);
    QPainterPath shoulders(QPointF(x - 4.5, 13.8));
    shoulders.cubicTo({x - 4.5, 8.6}, {x + 4.5, 8.6}, {x + 4.5, 13.8});
    shoulders.closeSubpath();
    painter.drawPath(shoulders);
}

void drawUsers(QPainter& painter) {
    drawPerson(painter, 8, blue);
}

void drawGroups(QPainter& painter) {
    drawPerson(painter, 10.5, slate);
    // What is behind must not shine through.
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    QPainterPath front;
    front.addEllipse(QPointF(5.5, 5), 3.9, 3.9);
    front.addRect(QRectF(0.4, 8.9, 10.5, 6));
    painter.fillPath(front, Qt::black);
    painter.restore();
    drawPerson(painter, 5.5, blue);
}

void drawSettings(QPainter& painter) {
    constexpr std::array<QPointF, 3> knobs = {QPointF(10.5, 3.5), QPointF(5, 8), QPointF(9, 12.5)};
    for (const QPointF& knob : knobs) {
        line(painter, slate, lineWidth, {{1.5, knob.y()}, {knob.x() - 1.8, knob.y()}});
        line(painter, slate, lineWidth, {{knob.x() + 1.8, knob.y()}, {14.5, knob.y()}});
        outline(painter, slate, 90);
        painter.drawEllipse(knob, 1.8, 1.8);
    }
}

void drawResults(QPainter& painter) {
    for (const double y : {3.5, 8.0, 12.5}) {
        line(painter, green, 1.4, {{1.5, y}, {2.8, y + 1.3}, {5, y - 1.5}});
        line(painter, slate, lineWidth, {{7.5, y}, {14.5, y}});
    }
}

// The users list: a letter of strokes on a badge, since a font's letter would differ everywhere.

void drawBadge(QPainter& painter, const QColor& color, const QPolygonF& letter) {
    outline(painter, color, 255, 0.5);
    painter.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 3, 3);
    line(painter, Qt::white, 1.6, letter);
}

void drawUserM(QPainter& painter) {
    drawBadge(painter, red, {{4.5, 11.5}, {4.5, 4.5}, {8, 9}, {11.5, 4.5}, {11.5, 11.5}});
}

void drawUserV(QPainter& painter) {
    drawBadge(painter, violet, {{4.5, 4.5}, {8, 11.5}, {11.5, 4.5}});
}

void drawUserG(QPainter& painter) {
    drawBadge(painter, green,
              {{11.2, 5.6},
               {9.8, 4.5},
               {6.4, 4.5},
               {4.6, 6.3},
               {4.6, 9.7},
               {6.4, 11.5},
               {9.6, 11.5},
               {11.3, 10},
               {11.3, 8.3},
               {8.6, 8.3}});
}

void drawUserA(QPainter& painter) {
    drawBadge(painter, blue, {{4.5, 11.5}, {8, 4.5}, {11.5, 11.5}});
    line(painter, Qt::white, 1.4, {{6, 9.3}, {10, 9.3}});
}

// Transfers: an arrow of the given height, pointing up or down, around x.

void drawArrow(QPainter& painter, double x, bool isUp, const QColor& color, double width, double reach) {
    const double tip = isUp ? 8 - reach : 8 + reach;
    const double tail = isUp ? 8 + reach : 8 - reach;
    const double wing = isUp ? tip + reach * 0.65 : tip - reach * 0.65;
    line(painter, color, width, {{x, tail}, {x, tip}});
    line(painter, color, width, {{x - reach * 0.65, wing}, {x, tip}, {x + reach * 0.65, wing}});
}

void drawActivityIdle(QPainter& painter) {
    line(painter, grey, 1.6, {{5.5, 4.5}, {5.5, 11.5}});
    line(painter, grey, 1.6, {{10.5, 4.5}, {10.5, 11.5}});
}

void drawActivityUp(QPainter& painter) {
    drawArrow(painter, 8, true, red, 1.8, 5);
}

void drawActivityDown(QPainter& painter) {
    drawArrow(painter, 8, false, blue, 1.8, 5);
}

// The notification area: badges, since the ground there is nobody's guess.

void drawTrayGround(QPainter& painter, const QColor& color) {
    outline(painter, color, 255, 0.5);
    painter.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 4, 4);
}

void drawTrayIdle(QPainter& painter) {
    drawTrayGround(painter, slate);
    line(painter, Qt::white, 1.8, {{4.5, 8}, {11.5, 8}});
}

void drawTrayUp(QPainter& painter) {
    drawTrayGround(painter, red);
    drawArrow(painter, 8, true, Qt::white, 1.8, 4.5);
}

void drawTrayDown(QPainter& painter) {
    drawTrayGround(painter, blue);
    drawArrow(painter, 8, false, Qt::white, 1.8, 4.5);
}

void drawTrayBoth(QPainter& painter) {
    drawTrayGround(painter, violet);
    drawArrow(painter, 4.8, true, Qt::white, 1.5, 3.6);
    drawArrow(painter, 11.2, false, Qt::white, 1.5, 3.6);
}

void drawTrayOffline(QPainter& painter) {
    outline(painter, grey, 40, 1.4);
    painter.drawRoundedRect(QRectF(1, 1, 14, 14), 3.5, 3.5);
    line(painter, grey, 1.6, {{5, 5}, {11, 11}});
    line(painter, grey, 1.6, {{11, 5}, {5, 11}});
}

constexpr std::array<IconPicture, 26> pictures = {{
    {"corvel", drawProgram},
    {"directory", drawDirectory},
    {"link", drawLink},
    {"file", drawFile},
    {"site-connected", drawConnected},
    {"site-disconnected", drawDisconnected},
    {"tab-console", drawConsole},
    {"tab-activity", drawActivity},
    {"tab-browser", drawBrowser},
    {"tab-stats", drawStatistics},
    {"tab-users", drawUsers},
    {"tab-groups", drawGroups},
    {"tab-settings", drawSettings},
    {"tab-results", drawResults},
    {"user-M", drawUserM, true},
    {"user-V", drawUserV, true},
    {"user-G", drawUserG, true},
    {"user-A", drawUserA, true},
    {"activity-idle", drawActivityIdle},
    {"activity-up", drawActivityUp},
    {"activity-down", drawActivityDown},
    {"tray-idle", drawTrayIdle, true},
    {"tray-up", drawTrayUp, true},
    {"tray-down", drawTrayDown, true},
    {"tray-both", drawTrayBoth, true},
    {"tray-offline", drawTrayOffline},
}};

} // namespace

std::span<const IconPicture> iconPictures() {
    return pictures;
}

} // namespace corvel

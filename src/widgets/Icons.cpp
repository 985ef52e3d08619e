#include "widgets/Icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <array>
#include <vector>

namespace corvel {

namespace {

// One piece of a picture, on a field of 16 by 16: a path, what is inside it filled as far as alpha says.
// Without a colour, what is inside is taken out of what lies below. The path is read as those of SVG are,
// absolute places alone: M and L with a point, C with three, Z; beside them E with a centre and a radius, R
// with the place, the size and the radius of the corners of a box, and A with those of its box, where it
// starts and how far it goes, in degrees.
struct Stroke {
    QColor color;
    const char* path;
    int alpha = 0;
    double width = 1.2;
};

// A picture of the program, in mid tones that are legible on a light and on a dark ground.
struct IconPicture {
    std::string_view name;
    std::vector<Stroke> strokes;
};

constexpr QColor blue(0x3B, 0x7D, 0xC4);
constexpr QColor amber(0xD9, 0xA4, 0x3B);
constexpr QColor green(0x3C, 0x9D, 0x5B);
constexpr QColor grey(0x8A, 0x8F, 0x98);
constexpr QColor slate(0x6F, 0x82, 0x9C);
constexpr QColor violet(0x8E, 0x6B, 0xC0);
constexpr QColor red(0xC9, 0x5A, 0x50);
constexpr QColor white(0xFF, 0xFF, 0xFF);
constexpr const char* page = "M 3.5 1.5 L 9.5 1.5 L 12.5 4.5 L 12.5 14.5 L 3.5 14.5 Z";
constexpr const char* fold = "M 9.5 1.5 L 9.5 4.5 L 12.5 4.5";
constexpr const char* badge = "R 1.5 1.5 13 13 3";
constexpr const char* tray = "R 0.5 0.5 15 15 4";

// Letters are strokes, since a font's letter would differ everywhere.
std::vector<IconPicture> pictures() {
    return {
        {"corvel",
         {{blue, "R 2 8.5 12 5.5 1.5", 60},
          {blue, "M 11.5 11.2 L 11.51 11.2"},
          {blue, "A 4.5 4.5 7 7 20 140"},
          {blue, "A 2.5 1.5 11 11 30 120"}}},
        {"directory", {{amber, "M 1.5 13 L 1.5 3.5 L 6 3.5 L 7.5 5.5 L 14.5 5.5 L 14.5 13 Z", 110}}},
        {"link",
         {{blue, page, 40},
          {blue, fold},
          {blue, "M 5.5 12 L 5.5 9 L 10 9"},
          {blue, "M 8.3 7 L 10.5 9 L 8.3 11"}}},
        {"file", {{grey, page, 40}, {grey, fold}, {grey, "M 5.5 8 L 10.5 8 M 5.5 11 L 10.5 11"}}},
        {"site-connected", {{green, "E 8 8 4.5", 255}}},
        {"site-disconnected", {{grey, "E 8 8 4.5"}}},
        {"tab-console",
         {{slate, "R 1.5 2.5 13 11 1.5", 40},
          {slate, "M 4.5 5.5 L 7 8 L 4.5 10.5 M 8.5 10.5 L 11.5 10.5", 0, 1.4}}},
        {"tab-activity", {{green, "M 1.5 8.5 L 4.5 8.5 L 6.5 3 L 9.5 13 L 11.5 8.5 L 14.5 8.5", 0, 1.4}}},
        {"tab-browser",
         {{slate, "M 3.5 5.5 L 3.5 12.5 L 7.5 12.5 M 3.5 8 L 7.5 8"},
          {amber, "R 1.5 1.5 5 4 0 R 8.5 6.5 6 3 0 R 8.5 11.5 6 3 0", 110}}},
        {"tab-stats",
         {{slate, "M 1.5 1.5 L 1.5 14.5 L 14.5 14.5"},
          {blue, "R 4 9 2 3.5 0 R 8 6 2 6.5 0 R 12 3 2 9.5 0", 90}}},
        {"tab-users", {{blue, "E 8 5 2.7 M 3.5 13.8 C 3.5 8.6 12.5 8.6 12.5 13.8 Z", 70}}},
        {"tab-groups",
         {{slate, "E 10.5 5 2.7 M 6 13.8 C 6 8.6 15 8.6 15 13.8 Z", 70},
          {{}, "E 5.5 5 3.9 R 0.4 8.9 10.5 6 0"},
          {blue, "E 5.5 5 2.7 M 1 13.8 C 1 8.6 10 8.6 10 13.8 Z", 70}}},
        {"tab-settings",
         {{slate, "M 1.5 3.5 L 8.7 3.5 M 12.3 3.5 L 14.5 3.5 E 10.5 3.5 1.8", 90},
          {slate, "M 1.5 8 L 3.2 8 M 6.8 8 L 14.5 8 E 5 8 1.8", 90},
          {slate, "M 1.5 12.5 L 7.2 12.5 M 10.8 12.5 L 14.5 12.5 E 9 12.5 1.8", 90}}},
        {"tab-results",
         {{green, "M 1.5 3.5 L 2.8 4.8 L 5 2", 0, 1.4},
          {green, "M 1.5 8 L 2.8 9.3 L 5 6.5", 0, 1.4},
          {green, "M 1.5 12.5 L 2.8 13.8 L 5 11", 0, 1.4},
          {slate, "M 7.5 3.5 L 14.5 3.5 M 7.5 8 L 14.5 8 M 7.5 12.5 L 14.5 12.5"}}},
        {"activity-idle", {{grey, "M 5.5 4.5 L 5.5 11.5 M 10.5 4.5 L 10.5 11.5", 0, 1.6}}},
        {"activity-up", {{red, "M 8 13 L 8 3 M 4.75 6.25 L 8 3 L 11.25 6.25", 0, 1.8}}},
        {"activity-down", {{blue, "M 8 3 L 8 13 M 4.75 9.75 L 8 13 L 11.25 9.75", 0, 1.8}}},
        {"tray-offline", {{grey, "R 1 1 14 14 3.5", 40, 1.4}, {grey, "M 5 5 L 11 11 M 11 5 L 5 11", 0, 1.6}}},
        {"clear", {{slate, "M 4.5 4.5 L 11.5 11.5 M 11.5 4.5 L 4.5 11.5", 0, 1.6}}},
        {"eye",
         {{slate, "M 1.5 8 C 4.5 2.5 11.5 2.5 14.5 8 C 11.5 13.5 4.5 13.5 1.5 8 Z"},
          {slate, "E 8 8 2", 110}}},
        {"warning",
         {{amber, "M 8 2 L 14.5 13.5 L 1.5 13.5 Z", 110}, {red, "M 8 6 L 8 9.5 M 8 11.6 L 8 11.7", 0, 1.6}}},
        {"lock-closed",
         {{green, "M 5 7.5 L 5 5 C 5 1 11 1 11 5 L 11 7.5", 0, 1.4},
          {green, "R 2.5 7.5 11 7 1.5", 110},
          {green, "M 8 10.3 L 8 11.7", 0, 1.4}}},
        {"lock-open",
         {{amber, "M 5 7.5 L 5 4 C 5 0 11 0 11 4", 0, 1.4},
          {amber, "R 2.5 7.5 11 7 1.5", 110},
          {amber, "M 8 10.3 L 8 11.7", 0, 1.4}}},
    };
}

// These are filled throughout, so legible on any ground: that of the notification area is nobody's guess.
std::vector<IconPicture> badges() {
    return {
        {"user-M",
         {{red, badge, 255, 0.5}, {white, "M 4.5 11.5 L 4.5 4.5 L 8 9 L 11.5 4.5 L 11.5 11.5", 0, 1.6}}},
        {"user-V", {{violet, badge, 255, 0.5}, {white, "M 4.5 4.5 L 8 11.5 L 11.5 4.5", 0, 1.6}}},
        {"user-G",
         {{green, badge, 255, 0.5},
          {white,
           "M 11.2 5.6 L 9.8 4.5 L 6.4 4.5 L 4.6 6.3 L 4.6 9.7 L 6.4 11.5 L 9.6 11.5 L 11.3 10 L 11.3 8.3 "
           "L 8.6 8.3",
           0, 1.6}}},
        {"user-A",
         {{blue, badge, 255, 0.5},
          {white, "M 4.5 11.5 L 8 4.5 L 11.5 11.5", 0, 1.6},
          {white, "M 6 9.3 L 10 9.3", 0, 1.4}}},
        {"tray-idle", {{slate, tray, 255, 0.5}, {white, "M 4.5 8 L 11.5 8", 0, 1.8}}},
        {"tray-up",
         {{red, tray, 255, 0.5}, {white, "M 8 12.5 L 8 3.5 M 5.075 6.425 L 8 3.5 L 10.925 6.425", 0, 1.8}}},
        {"tray-down",
         {{blue, tray, 255, 0.5}, {white, "M 8 3.5 L 8 12.5 M 5.075 9.575 L 8 12.5 L 10.925 9.575", 0, 1.8}}},
        {"tray-both",
         {{violet, tray, 255, 0.5},
          {white, "M 4.8 11.6 L 4.8 4.4 M 2.46 6.74 L 4.8 4.4 L 7.14 6.74", 0, 1.5},
          {white, "M 11.2 4.4 L 11.2 11.6 M 8.86 9.26 L 11.2 11.6 L 13.54 9.26", 0, 1.5}}},
    };
}

QPainterPath pathOf(const char* text) {
    const QStringList words = QString::fromLatin1(text).split(u' ');
    QPainterPath path;
    for (auto word = words.begin(); word != words.end();) {
        const char what = (word++)->front().toLatin1();
        std::vector<double> n;
        for (; word != words.end() && !word->front().isLetter(); ++word) {
            n.push_back(word->toDouble());
        }
        switch (what) {
        case 'M':
            path.moveTo(n[0], n[1]);
            break;
        case 'L':
            path.lineTo(n[0], n[1]);
            break;
        case 'C':
            path.cubicTo(n[0], n[1], n[2], n[3], n[4], n[5]);
            break;
        case 'E':
            path.addEllipse(QPointF(n[0], n[1]), n[2], n[2]);
            break;
        case 'R':
            path.addRoundedRect(n[0], n[1], n[2], n[3], n[4], n[4]);
            break;
        case 'A':
            path.arcMoveTo(n[0], n[1], n[2], n[3], n[4]);
            path.arcTo(n[0], n[1], n[2], n[3], n[4], n[5]);
            break;
        default: // Z
            path.closeSubpath();
            break;
        }
    }
    return path;
}

void draw(const IconPicture& picture, QPainter& painter) {
    for (const Stroke& stroke : picture.strokes) {
        const QPainterPath path = pathOf(stroke.path);
        if (!stroke.color.isValid()) {
            painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
            painter.fillPath(path, Qt::black);
            painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
            continue;
        }
        QColor fill = stroke.color;
        fill.setAlpha(stroke.alpha);
        painter.setPen(QPen(stroke.color, stroke.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(fill);
        painter.drawPath(path);
    }
}

constexpr double field = 16; // the side of what a picture is drawn on

// What is drawn for a path, as the attribute d of SVG has it.
QByteArray svgPath(const QPainterPath& path) {
    QByteArray text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        text += element.isMoveTo() ? "M" : element.isLineTo() ? "L" : element.isCurveTo() ? "C" : "";
        text += QByteArray::number(element.x, 'g', 5) + ' ' + QByteArray::number(element.y, 'g', 5) + ' ';
    }
    return text.trimmed();
}

const IconPicture* find(const std::vector<IconPicture>& table, std::string_view name) {
    const auto found = std::ranges::find(table, name, &IconPicture::name);
    return found == table.end() ? nullptr : &*found;
}

// Lines in mid tones would drown in the ground of a selected row.
void tint(QPainter& painter, QColor color) {
    constexpr int strength = 215;
    color.setAlpha(strength);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(QRectF(0, 0, field, field), color);
}

class Engine : public QIconEngine {
  public:
    Engine(const IconPicture& picture, const QColor& line, bool isBadge)
        : picture_(picture), line_(line), isBadge_(isBadge) {}

    void paint(QPainter* painter, const QRect& area, QIcon::Mode mode, QIcon::State /*state*/) override {
        // On a picture of its own: some drawings cut holes, which must not reach the ground.
        const double ratio = painter->device()->devicePixelRatioF();
        QPixmap picture = pixmap((QSizeF(area.size()) * ratio).toSize(), mode, QIcon::Off);
        picture.setDevicePixelRatio(ratio);
        painter->drawPixmap(area.topLeft(), picture);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setOpacity(mode == QIcon::Disabled ? 0.4 : 1.0);
        const double side = std::min(size.width(), size.height());
        painter.translate((size.width() - side) / 2, (size.height() - side) / 2);
        painter.scale(side / field, side / field);
        draw(picture_, painter);
        const QPalette lists = QApplication::palette("QAbstractItemView");
        const QColor selected = lists.color(QPalette::HighlightedText);
        // A selection that leaves the text its own color leaves the pictures theirs.
        if (mode == QIcon::Selected && !isBadge_ && selected != lists.color(QPalette::Text)) {
            tint(painter, selected);
        } else if (line_.isValid()) {
            tint(painter, line_);
        }
        return picture;
    }

    // Windows and the notification area ask which sizes there are, and take these.
    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        QList<QSize> sizes;
        for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
            sizes.append({side, side});
        }
        return sizes;
    }

    QIconEngine* clone() const override { return new Engine(picture_, line_, isBadge_); }

  private:
    const IconPicture& picture_;
    QColor line_;
    bool isBadge_;
};

} // namespace

QIcon icon(std::string_view name, const QColor& line) {
    static const std::array tables = {pictures(), badges()};
    for (const std::vector<IconPicture>& table : tables) {
        if (const IconPicture* const picture = find(table, name)) {
            return QIcon(new Engine(*picture, line, &table == &tables.back()));
        }
    }
    return {};
}

QByteArray iconSvg(std::string_view name) {
    const std::vector<IconPicture> table = pictures();
    const IconPicture* const picture = find(table, name);
    if (picture == nullptr) {
        return {};
    }
    QByteArray text =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"64\" height=\"64\" viewBox=\"0 0 16 16\" "
        "stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    for (const Stroke& stroke : picture->strokes) {
        const QByteArray colour = stroke.color.name().toLatin1();
        text += "  <path d=\"" + svgPath(pathOf(stroke.path)) + "\" fill=\"" + colour + "\" fill-opacity=\"" +
                QByteArray::number(stroke.alpha / 255.0, 'f', 3) + "\" stroke=\"" + colour +
                "\" stroke-width=\"" + QByteArray::number(stroke.width) + "\"/>\n";
    }
    return text + "</svg>\n";
}

} // namespace corvel

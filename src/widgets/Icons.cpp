#include "widgets/Icons.h"

#include "widgets/IconPictures.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace corvel {

namespace {

constexpr double field = 16; // the side of what a picture is drawn on

// Lines in mid tones would drown in the ground of a selected row.
void tint(QPainter& painter, QColor color) {
    constexpr int strength = 215;
    color.setAlpha(strength);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(QRectF(0, 0, field, field), color);
}

class Engine : public QIconEngine {
  public:
    Engine(const IconPicture& picture, const QColor& line) : picture_(picture), line_(line) {}

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
        picture_.draw(painter);
        const QPalette lists = QApplication::palette("QAbstractItemView");
        const QColor selected = lists.color(QPalette::HighlightedText);
        // A selection that leaves the text its own color leaves the pictures theirs.
        if (mode == QIcon::Selected && !picture_.isBadge && selected != lists.color(QPalette::Text)) {
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

    QIconEngine* clone() const override { return new Engine(picture_, line_); }

  private:
    const IconPicture& picture_;
    QColor line_;
};

} // namespace

QIcon icon(std::string_view name, const QColor& line) {
    const std::span<const IconPicture> all = iconPictures();
    const auto found = std::ranges::find(all, name, &IconPicture::name);
    return found == all.end() ? QIcon() : QIcon(new Engine(*found, line));
}

} // namespace corvel

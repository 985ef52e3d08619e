#include "widgets/Icons.h"

#include "widgets/IconPictures.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace corvel {
namespace {

QImage drawn(const QIcon& icon, int side, const QColor& ground, QIcon::Mode mode = QIcon::Normal) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    icon.paint(&painter, image.rect(), Qt::AlignCenter, mode);
    painter.end();
    return image;
}

double channelContrast(double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * channelContrast(color.redF()) + 0.7152 * channelContrast(color.greenF()) +
           0.0722 * channelContrast(color.blueF());
}

// The highest contrast of any pixel with the ground, from 1 (none) to 21.
double contrast(const QImage& image, const QColor& ground) {
    double highest = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const double a = luminance(image.pixelColor(x, y)) + 0.05;
            const double b = luminance(ground) + 0.05;
            highest = std::max(highest, std::max(a, b) / std::min(a, b));
        }
    }
    return highest;
}

// Lines of 1.2 pixels are never of the full colour at 16 pixels, so less than the 3 of large text will do.
TEST(Icons, EveryPictureStandsOutOnEveryGround) {
    struct Row {
        const char* name;
        QColor ground;
        QIcon::Mode mode;
        int side;
        double leastContrast;
    };
    const QColor dark(0x24, 0x26, 0x2A);
    const std::vector<Row> rows = {
        {"light, small", Qt::white, QIcon::Normal, 16, 2},
        {"light, large", Qt::white, QIcon::Normal, 32, 2},
        {"dark, small", dark, QIcon::Normal, 16, 2},
        {"dark, large", dark, QIcon::Normal, 32, 2},
        {"selected row", QApplication::palette().color(QPalette::Highlight), QIcon::Selected, 16, 1.9},
    };
    for (const IconPicture& picture : iconPictures()) {
        for (const Row& row : rows) {
            EXPECT_GE(contrast(drawn(icon(picture.name), row.side, row.ground, row.mode), row.ground),
                      row.leastContrast)
                << picture.name << " " << row.name;
        }
    }
}

TEST(Icons, NoTwoPicturesAreAlike) {
    std::map<QByteArray, std::string_view> seen;
    for (const IconPicture& picture : iconPictures()) {
        const QImage image = drawn(icon(picture.name), 32, Qt::white);
        const QByteArray bytes(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
        const auto [other, isNew] = seen.emplace(bytes, picture.name);
        EXPECT_TRUE(isNew) << picture.name << " and " << other->second;
    }
}

TEST(Icons, PicturesAreDrawnSharpAtTheSizeOfTheScreen) {
    const QPixmap twofold = icon("file").pixmap({16, 16}, 2.0);
    EXPECT_EQ(twofold.size(), QSize(32, 32));
    EXPECT_EQ(twofold.toImage(),
              icon("file").pixmap({32, 32}, 1.0).toImage().convertedTo(twofold.toImage().format()));
}

TEST(Icons, HolesDoNotReachTheGround) {
    const QImage image = drawn(icon("tab-groups"), 32, Qt::white);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(image.pixelColor(x, y).alpha(), 255) << x << ',' << y;
        }
    }
}

TEST(Icons, UnknownNamesGiveNoPicture) {
    EXPECT_TRUE(icon("no such name").isNull());
    EXPECT_TRUE(icon("").isNull());
}

} // namespace
} // namespace corvel

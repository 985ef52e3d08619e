#include "widgets/Icons.h"

#include "widgets/IconPictures.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
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

// The greatest difference of any pixel's grey from the ground's, up to 255.
int contrast(const QImage& image, const QColor& ground) {
    int highest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            highest = std::max(highest, std::abs(qGray(image.pixel(x, y)) - qGray(ground.rgb())));
        }
    }
    return highest;
}

TEST(Icons, EveryPictureStandsOutOnEveryGround) {
    constexpr int leastContrast = 50; // lines of 1.2 pixels are never of the full colour at 16 pixels
    struct Row {
        const char* name;
        QColor ground;
        QIcon::Mode mode;
    };
    const std::vector<Row> rows = {
        {"light", Qt::white, QIcon::Normal},
        {"dark", QColor(0x24, 0x26, 0x2A), QIcon::Normal},
        {"selected row", QApplication::palette().color(QPalette::Highlight), QIcon::Selected},
    };
    for (const IconPicture& picture : iconPictures()) {
        for (const Row& row : rows) {
            EXPECT_GE(contrast(drawn(icon(picture.name), 16, row.ground, row.mode), row.ground),
                      leastContrast)
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

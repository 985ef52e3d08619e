#include "widgets/Icons.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace corvel {
namespace {

constexpr std::array names = {
    "corvel",        "directory",    "link",          "file",      "site-connected", "site-disconnected",
    "tab-console",   "tab-activity", "tab-browser",   "tab-stats", "tab-users",      "tab-groups",
    "tab-settings",  "tab-results",  "user-M",        "user-V",    "user-G",         "user-A",
    "activity-idle", "activity-up",  "activity-down", "tray-idle", "tray-up",        "tray-down",
    "tray-both",     "tray-offline"};

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

TEST(Icons, EveryPictureStandsOutOnEveryGroundAndIsLikeNoOther) {
    constexpr int leastContrast = 50; // lines of 1.2 pixels are never of the full colour at 16 pixels
    const std::vector<std::pair<QColor, QIcon::Mode>> grounds = {
        {Qt::white, QIcon::Normal},
        {QColor(0x24, 0x26, 0x2A), QIcon::Normal},
        {QApplication::palette().color(QPalette::Highlight), QIcon::Selected},
    };
    std::vector<QImage> seen;
    for (const char* const name : names) {
        for (const auto& [ground, mode] : grounds) {
            EXPECT_GE(contrast(drawn(icon(name), 16, ground, mode), ground), leastContrast)
                << name << " on " << ground.name().toStdString();
        }
        seen.push_back(drawn(icon(name), 32, Qt::white));
        EXPECT_EQ(std::ranges::count(seen, seen.back()), 1) << name;
    }
    EXPECT_TRUE(icon("no such name").isNull());
}

TEST(Icons, PicturesAreDrawnSharpAtTheSizeOfTheScreenAndHolesDoNotReachTheGround) {
    const QPixmap twofold = icon("file").pixmap({16, 16}, 2.0);
    EXPECT_EQ(twofold.toImage(),
              icon("file").pixmap({32, 32}, 1.0).toImage().convertedTo(twofold.toImage().format()));
    const QImage image = drawn(icon("tab-groups"), 32, Qt::white);
    for (int i = 0; i < 32 * 32; ++i) {
        ASSERT_EQ(image.pixelColor(i % 32, i / 32).alpha(), 255);
    }
}

} // namespace
} // namespace corvel

#include "widgets/ImageLists.h"

#include "support/TemporaryDirectory.h"

#include <QImage>

#include <gtest/gtest.h>

#include <string>

namespace corvel::test {
namespace {

constexpr int side = 16;

QImage pictureOf(const QIcon& icon) {
    return icon.pixmap(side, side).toImage().convertedTo(QImage::Format_ARGB32);
}

QImage shown(const ImageLists& lists, std::string_view key) {
    return pictureOf(lists.image(key));
}

// A picture of one colour, as a file in directory; its path.
std::string writePicture(const TemporaryDirectory& directory, const char* name, const QColor& color,
                         const char* format) {
    QImage picture(side, side, QImage::Format_ARGB32);
    picture.fill(color);
    const std::string path = directory.path() + "/" + name;
    EXPECT_TRUE(picture.save(QString::fromStdString(path), format));
    return path;
}

// Every key of settings.ini reaches the image that it names, and no other.
TEST(ImageLists, EachKeyReplacesItsOwnImage) {
    const TemporaryDirectory directory;
    constexpr std::array<std::string_view, imageKeys.size()> images = {
        "tray-idle",     "tray-up",      "tray-down",     "tray-both",      "tray-offline",
        "activity-idle", "activity-up",  "activity-down", "site-connected", "site-disconnected",
        "tab-console",   "tab-activity", "tab-browser",   "tab-stats",      "tab-users",
        "tab-groups",    "tab-settings", "tab-results"};
    const ImageLists builtIn;
    for (std::size_t key = 0; key < imageKeys.size(); ++key) {
        Settings settings;
        settings.images[key] = writePicture(directory, "größer.png", Qt::red, "PNG");
        ImageLists lists;
        lists.replaceImages(settings);
        for (std::size_t i = 0; i < images.size(); ++i) {
            EXPECT_EQ(shown(lists, images[i]) == shown(builtIn, images[i]), i != key)
                << imageKeys[key].key << ' ' << images[i];
        }
        // A person's picture is shown as it is; the program's own take a colour.
        EXPECT_EQ(pictureOf(lists.image(images[key], Qt::white)).pixelColor(0, 0), QColor(Qt::red));
    }
    EXPECT_NE(pictureOf(builtIn.image("activity-up", Qt::white)), shown(builtIn, "activity-up"));
}

TEST(ImageLists, WhatCannotReplaceAnImageLeavesIt) {
    const TemporaryDirectory directory;
    const std::string picture = writePicture(directory, "red.png", Qt::red, "PNG");
    directory.write("text.png", "no picture");
    directory.makeDirectory("folder.png");
    const std::vector<std::pair<std::string, int>> cases = {
        {picture, 0},
        {picture, 3},
        {"", 1},
        {directory.fileNamed("missing.png"), 1},
        {directory.fileNamed("folder.png"), 1},
        {directory.fileNamed("text.png"), 1},
    };
    const ImageLists builtIn;
    for (const auto& [fileName, index] : cases) {
        ImageLists lists;
        lists.ReplaceImage(ImageList::sites, fileName, index);
        EXPECT_EQ(shown(lists, "site-connected"), shown(builtIn, "site-connected")) << fileName << index;
    }
}

// Pictures are read by what is in them; a large one is not kept at its size.
TEST(ImageLists, ReadsPicturesByTheirContent) {
    const TemporaryDirectory directory;
    ImageLists lists;
    lists.ReplaceImage(ImageList::tray, writePicture(directory, "bitmap.png", Qt::blue, "BMP"), 1);
    lists.ReplaceImage(ImageList::tray, writePicture(directory, "icon", Qt::green, "ICO"), 2);
    QImage(4000, 2000, QImage::Format_RGB32).save(QString::fromStdString(directory.path() + "/large.png"));
    lists.ReplaceImage(ImageList::tray, directory.path() + "/large.png", 3);
    EXPECT_EQ(shown(lists, "tray-idle").pixelColor(8, 8), QColor(Qt::blue));
    EXPECT_EQ(shown(lists, "tray-up").pixelColor(8, 8), QColor(Qt::green));
    EXPECT_EQ(lists.image("tray-down").availableSizes(), QList<QSize>{QSize(256, 128)});
}

} // namespace
} // namespace corvel::test

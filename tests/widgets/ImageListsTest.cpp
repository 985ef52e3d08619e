#include "widgets/ImageLists.h"

#include "support/TemporaryDirectory.h"

#include <QImage>

#include <gtest/gtest.h>

#include <string>

namespace corvel::test {
namespace {

constexpr int side = 16;

QImage shown(const ImageLists& lists, std::string_view key) {
    return lists.image(key).pixmap(side, side).toImage().convertedTo(QImage::Format_ARGB32);
}

// A red picture, as a file in directory; its path.
std::string writePicture(const TemporaryDirectory& directory) {
    QImage picture(side, side, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    const std::string path = directory.path() + "/größer.png";
    EXPECT_TRUE(picture.save(QString::fromStdString(path)));
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
        settings.images[key] = writePicture(directory);
        ImageLists lists;
        lists.replaceImages(settings);
        for (std::size_t i = 0; i < images.size(); ++i) {
            EXPECT_EQ(shown(lists, images[i]) == shown(builtIn, images[i]), i != key)
                << imageKeys[key].key << ' ' << images[i];
        }
    }
}

} // namespace
} // namespace corvel::test

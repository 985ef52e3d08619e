#include "widgets/ImageLists.h"

#include "config/Files.h"
#include "widgets/Icons.h"
#include "widgets/TextConversion.h"

#include <QImageReader>
#include <QPixmap>

#include <algorithm>
#include <cstddef>

namespace corvel {

namespace {

// The program's own images, as in imageKeys.
constexpr std::array<std::string_view, imageKeys.size()> builtIns = {
    "tray-idle",   "tray-up",       "tray-down",      "tray-both",         "tray-offline", "activity-idle",
    "activity-up", "activity-down", "site-connected", "site-disconnected", "tab-console",  "tab-activity",
    "tab-browser", "tab-stats",     "tab-users",      "tab-groups",        "tab-settings", "tab-results"};

constexpr int largestSide = 256; // in pixels; no place shows an image larger

// A picture of every size that the file holds; none where it holds no picture.
QIcon readPicture(const QString& fileName) {
    QImageReader reader(fileName);
    reader.setDecideFormatFromContent(true);
    QIcon picture;
    do {
        if (const QSize size = reader.size(); size.width() > largestSide || size.height() > largestSide) {
            reader.setScaledSize(size.scaled(largestSide, largestSide, Qt::KeepAspectRatio));
        }
        const QImage image = reader.read();
        if (image.isNull()) {
            break;
        }
        picture.addPixmap(QPixmap::fromImage(image));
    } while (!reader.supportsAnimation() && reader.jumpToNextImage());
    return picture;
}

} // namespace

ImageLists::ImageLists() {
    std::ranges::transform(builtIns, images_.begin(), [](std::string_view key) { return Image{icon(key)}; });
}

void ImageLists::ReplaceImage(ImageList list, std::string_view fileName, int index) {
    const auto place = std::ranges::find_if(
        imageKeys, [&](const ImageKey& key) { return key.list == list && key.index == index; });
    if (place == imageKeys.end() || !FileExists(fileName)) {
        return;
    }
    if (const QIcon picture = readPicture(fromCore(fileName)); !picture.isNull()) {
        images_[static_cast<std::size_t>(place - imageKeys.begin())] = {picture, true};
    }
}

void ImageLists::replaceImages(const Settings& settings) {
    for (std::size_t i = 0; i < imageKeys.size(); ++i) {
        ReplaceImage(imageKeys[i].list, settings.images[i], imageKeys[i].index);
    }
}

QIcon ImageLists::image(std::string_view key, const QColor& line) const {
    const auto place = std::ranges::find(builtIns, key);
    if (place == builtIns.end()) {
        return {};
    }
    const Image& found = images_[static_cast<std::size_t>(place - builtIns.begin())];
    return found.isReplaced || !line.isValid() ? found.picture : icon(key, line);
}

} // namespace corvel

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

struct BuiltIn {
    ImageList list;
    std::string_view key;
};

// The images of each list in their order.
constexpr std::array<BuiltIn, 18> builtIns = {{
    {ImageList::tray, "tray-idle"},
    {ImageList::tray, "tray-up"},
    {ImageList::tray, "tray-down"},
    {ImageList::tray, "tray-both"},
    {ImageList::tray, "tray-offline"},
    {ImageList::activity, "activity-idle"},
    {ImageList::activity, "activity-up"},
    {ImageList::activity, "activity-down"},
    {ImageList::sites, "site-connected"},
    {ImageList::sites, "site-disconnected"},
    {ImageList::tabs, "tab-console"},
    {ImageList::tabs, "tab-activity"},
    {ImageList::tabs, "tab-browser"},
    {ImageList::tabs, "tab-stats"},
    {ImageList::tabs, "tab-users"},
    {ImageList::tabs, "tab-groups"},
    {ImageList::tabs, "tab-settings"},
    {ImageList::tabs, "tab-results"},
}};

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
    for (const BuiltIn& builtIn : builtIns) {
        lists_[static_cast<std::size_t>(builtIn.list)].push_back(
            {.key = builtIn.key, .picture = icon(builtIn.key), .isReplaced = false});
    }
}

void ImageLists::ReplaceImage(ImageList list, std::string_view fileName, int index) {
    std::vector<Image>& images = lists_[static_cast<std::size_t>(list)];
    if (index < 1 || index > static_cast<int>(images.size()) || !FileExists(fileName)) {
        return;
    }
    if (const QIcon picture = readPicture(fromCore(fileName)); !picture.isNull()) {
        Image& replaced = images[static_cast<std::size_t>(index) - 1];
        replaced.picture = picture;
        replaced.isReplaced = true;
    }
}

void ImageLists::replaceImages(const Settings& settings) {
    for (std::size_t i = 0; i < imageKeys.size(); ++i) {
        ReplaceImage(imageKeys[i].list, settings.images[i], imageKeys[i].index);
    }
}

const ImageLists::Image* ImageLists::find(std::string_view key) const {
    for (const std::vector<Image>& images : lists_) {
        if (const auto found = std::ranges::find(images, key, &Image::key); found != images.end()) {
            return &*found;
        }
    }
    return nullptr;
}

QIcon ImageLists::image(std::string_view key) const {
    const Image* const found = find(key);
    return found == nullptr ? QIcon() : found->picture;
}

QIcon ImageLists::image(std::string_view key, const QColor& line) const {
    const Image* const found = find(key);
    return found == nullptr || found->isReplaced ? image(key) : icon(key, line);
}

} // namespace corvel

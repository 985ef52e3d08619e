#pragma once

#include "config/Settings.h"

#include <QIcon>

#include <array>
#include <string_view>

namespace corvel {

// The program's lists of images: each starts with the program's own icons, any of which a picture from a file
// can replace. Images count from 1.
class ImageLists {
  public:
    ImageLists();

    // Puts the picture of a file in the place of an image, which keeps its key. fileName: UTF-8, relative to
    // the current directory unless it is absolute. Where the list has no such image, or the file is missing
    // or holds no picture, the image stays, and nothing is said about it.
    void ReplaceImage(ImageList list, std::string_view fileName, int index);

    // All replacements that settings.ini asks for, in their order.
    void replaceImages(const Settings& settings);

    // The image of a key, which is the name that icon() has for the program's own; without a picture where
    // there is no such image. line: for a coloured ground; where the image is the program's own, its lines
    // have this colour.
    QIcon image(std::string_view key, const QColor& line = {}) const;

  private:
    struct Image {
        QIcon picture;
        bool isReplaced = false;
    };

    std::array<Image, imageKeys.size()> images_; // as in imageKeys
};

} // namespace corvel

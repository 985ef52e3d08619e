#pragma once

#include <span>
#include <string_view>

class QPainter;

namespace corvel {

// A picture of the program. draw paints it on a field of 16 by 16, in mid tones that are legible on a light
// and on a dark ground.
struct IconPicture {
    std::string_view name;
    void (*draw)(QPainter& painter);
    bool isBadge = false; // filled throughout, so legible on any ground
};

// Every picture that there is.
std::span<const IconPicture> iconPictures();

} // namespace corvel

#pragma once

#include <QColor>

#include <cstdint>

namespace corvel {

// Lengths and colours as the store and settings.ini have them, for the widgets, and back.

// Lengths outside the widgets are in layout units of 1/1440 inch, of which a device-independent pixel has
// this many at the reference of 96 pixels to an inch.
inline constexpr int unitsPerPixel = 15;

// The nearest whole number of device-independent pixels; halves go away from zero.
constexpr int pixelsFromUnits(int units) {
    constexpr int half = unitsPerPixel / 2;
    return (units < 0 ? units - half : units + half) / unitsPerPixel;
}

// Exact. pixels: at most INT_MAX / 15 in size.
constexpr int unitsFromPixels(int pixels) {
    return pixels * unitsPerPixel;
}

// Colours have red in the low byte.
inline QColor colorFromStore(std::int32_t color) {
    constexpr std::int32_t byte = 0xFF;
    return {color & byte, (color >> 8) & byte, (color >> 16) & byte};
}

inline std::int32_t storeColor(const QColor& color) {
    return color.red() | color.green() << 8 | color.blue() << 16;
}

} // namespace corvel

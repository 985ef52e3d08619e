#pragma once

#include <QColor>

#include <cstdint>

namespace corvel {

// A colour as the store and settings.ini have it, red in the low byte, for the widgets, and back.
inline QColor colorFromStore(std::int32_t color) {
    constexpr std::int32_t byte = 0xFF;
    return {color & byte, (color >> 8) & byte, (color >> 16) & byte};
}

inline std::int32_t storeColor(const QColor& color) {
    return color.red() | color.green() << 8 | color.blue() << 16;
}

} // namespace corvel

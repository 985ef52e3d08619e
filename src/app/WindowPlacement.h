#pragma once

#include <span>

namespace corvel {

// A place on the desktop, in any unit, with the y axis downwards.
struct Rectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Rectangle&) const = default;
};

// What must be in sight of a window's upper edge to take hold of it, and the height of the bar above it.
struct Grip {
    int width = 0;
    int titleHeight = 0;
};

// Where a window goes that is to come back to a remembered place, without its frame, on screens that may have
// changed since: there, as long as one can take hold of it, else onto the nearest screen. It is never larger
// than all screens together. screens: their usable areas; with none of them, the window stays.
Rectangle placedOnScreens(Rectangle window, std::span<const Rectangle> screens, Grip grip);

} // namespace corvel

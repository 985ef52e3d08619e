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

// How wide the sites list is, in units of 1/1440 inch. The bar beside it begins a unit before its right edge.
struct SplitterLayout {
    int listWidth = 0;
    int dragOffset = 0; // where inside the bar the current drag began; 0: no drag is under way
};

// The layout as a window shows it that may have become too narrow for it: the list takes at most half of it.
SplitterLayout splitterWithin(SplitterLayout layout, int windowWidth);

// The left button went down, or the mouse moved, at x inside the bar. A move that would make the list
// narrower than nothing has no effect; past the middle of the window the list stops there.
SplitterLayout splitterPressed(SplitterLayout layout, double x);
SplitterLayout splitterMoved(SplitterLayout layout, double x, int windowWidth);

} // namespace corvel

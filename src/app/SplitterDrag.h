#pragma once

namespace corvel {

// Where the sites list, the bar beside it and the tabs stand, in units of 1/1440 inch from the window's left
// edge.
struct SplitterLayout {
    int listWidth = 0;
    int barLeft = 0;
    int tabLeft = 0;
    int dragOffset = 0; // where inside the bar the current drag began; 0: no drag is under way
};

// The layout for a list of the given width, with no drag under way.
SplitterLayout splitterAt(int listWidth, int barWidth);

// The layout as a window shows it that may have become too narrow for it: the list takes at most half of it.
SplitterLayout splitterWithin(SplitterLayout layout, int barWidth, int windowWidth);

// The left button went down, or the mouse moved, at x inside the bar; the button came up. A move that would
// make the list narrower than nothing has no effect; past the middle of the window the list stops there.
SplitterLayout splitterPressed(SplitterLayout layout, double x);
SplitterLayout splitterMoved(SplitterLayout layout, double x, int barWidth, int windowWidth);
SplitterLayout splitterReleased(SplitterLayout layout);

} // namespace corvel

#include "app/WindowPlacement.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace corvel {

namespace {

// Far out of every screen, lengths from a damaged store would not fit an int when added.
using Wide = std::int64_t;

Wide right(const Rectangle& area) {
    return Wide{area.left} + area.width;
}

Wide bottom(const Rectangle& area) {
    return Wide{area.top} + area.height;
}

Rectangle around(std::span<const Rectangle> screens) {
    Wide left = std::numeric_limits<Wide>::max();
    Wide top = left;
    Wide rightmost = std::numeric_limits<Wide>::min();
    Wide lowest = rightmost;
    for (const Rectangle& screen : screens) {
        left = std::min<Wide>(left, screen.left);
        top = std::min<Wide>(top, screen.top);
        rightmost = std::max(rightmost, right(screen));
        lowest = std::max(lowest, bottom(screen));
    }
    return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(rightmost - left),
            static_cast<int>(lowest - top)};
}

bool canBeGripped(const Rectangle& window, const Rectangle& screen, int gripWidth) {
    const Wide inSight = std::min(right(window), right(screen)) - std::max<Wide>(window.left, screen.left);
    return window.top >= screen.top && window.top < bottom(screen) &&
           inSight >= std::min(gripWidth, window.width);
}

// How far the window's middle is from the screen, across and down together; 0 when it is on it.
Wide distance(const Rectangle& window, const Rectangle& screen) {
    const Wide x = Wide{window.left} + window.width / 2;
    const Wide y = Wide{window.top} + window.height / 2;
    const Wide across = std::max<Wide>({screen.left - x, x - right(screen), 0});
    const Wide down = std::max<Wide>({screen.top - y, y - bottom(screen), 0});
    return across + down;
}

} // namespace

Rectangle placedOnScreens(Rectangle window, std::span<const Rectangle> screens, Grip grip) {
    if (screens.empty()) {
        return window;
    }
    const Rectangle desktop = around(screens);
    window.width = std::min(window.width, desktop.width);
    window.height = std::min(window.height, desktop.height - grip.titleHeight);
    if (std::ranges::any_of(
            screens, [&](const Rectangle& screen) { return canBeGripped(window, screen, grip.width); })) {
        return window;
    }
    const Rectangle& screen = *std::ranges::min_element(
        screens, {}, [&](const Rectangle& candidate) { return distance(window, candidate); });
    const int highest = screen.top + grip.titleHeight;
    window.width = std::min(window.width, screen.width);
    window.height = std::min(window.height, screen.height - grip.titleHeight);
    window.left = static_cast<int>(std::clamp<Wide>(window.left, screen.left, right(screen) - window.width));
    window.top = static_cast<int>(std::clamp<Wide>(window.top, highest, bottom(screen) - window.height));
    return window;
}

SplitterLayout splitterWithin(SplitterLayout layout, int windowWidth) {
    layout.listWidth = std::min(layout.listWidth, windowWidth / 2);
    return layout;
}

SplitterLayout splitterPressed(SplitterLayout layout, double x) {
    layout.dragOffset = static_cast<int>(std::nearbyint(x));
    return layout;
}

SplitterLayout splitterMoved(SplitterLayout layout, double x, int windowWidth) {
    const auto wanted = static_cast<int>(std::nearbyint(layout.listWidth - 1 + x - layout.dragOffset));
    if (layout.dragOffset > 0 && wanted >= 0) {
        layout.listWidth = std::min(wanted, windowWidth / 2);
    }
    return layout;
}

} // namespace corvel

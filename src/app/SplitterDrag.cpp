#include "app/SplitterDrag.h"

#include "common/Numbers.h"

#include <algorithm>

namespace corvel {

SplitterLayout splitterAt(int listWidth, int barWidth) {
    return {
        .listWidth = listWidth, .barLeft = listWidth - 1, .tabLeft = listWidth + barWidth, .dragOffset = 0};
}

SplitterLayout splitterWithin(SplitterLayout layout, int barWidth, int windowWidth) {
    return layout.listWidth > windowWidth / 2 ? splitterAt(windowWidth / 2, barWidth) : layout;
}

SplitterLayout splitterPressed(SplitterLayout layout, double x) {
    layout.dragOffset = static_cast<int>(roundHalfToEven(x));
    return layout;
}

SplitterLayout splitterMoved(SplitterLayout layout, double x, int barWidth, int windowWidth) {
    if (layout.dragOffset <= 0) {
        return layout;
    }
    const int wanted = static_cast<int>(roundHalfToEven(layout.barLeft + (x - layout.dragOffset)));
    const int position = std::min(wanted, windowWidth / 2);
    if (position < 0) {
        return layout;
    }
    layout.barLeft = position - 1;
    layout.listWidth = position;
    layout.tabLeft = position + barWidth;
    return layout;
}

SplitterLayout splitterReleased(SplitterLayout layout) {
    layout.dragOffset = 0;
    layout.barLeft = layout.listWidth - 1;
    return layout;
}

} // namespace corvel

#pragma once

#include <algorithm>
#include <numeric>
#include <span>

namespace corvel {

// The width of the name column, in units of 1/1440 inch as everything here: what the list's width leaves
// beside the other visible columns, less room for a scroll bar, and never too little to read a name.
inline int FitBrowserColumns(int listWidth, std::span<const int> otherColumnWidths) {
    constexpr int scrollBarRoom = 400;
    constexpr int leastNameWidth = 2000;
    const int others = std::accumulate(otherColumnWidths.begin(), otherColumnWidths.end(), 0);
    return std::max(listWidth - others - scrollBarRoom, leastNameWidth);
}

} // namespace corvel

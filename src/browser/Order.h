#pragma once

#include "browser/Listing.h"
#include "common/TextEncoding.h"

#include <cstdint>
#include <vector>

namespace corvel {

enum class SortOrder : std::int16_t { ascending = 0, descending = 1 };

// How a person wants the browser's rows ordered. Belongs to the site and outlives its listings.
struct BrowserSort {
    BrowserColumn column = BrowserColumn::name;
    SortOrder order = SortOrder::ascending;

    bool operator==(const BrowserSort&) const = default;
};

// The sort after a click on the header of column: the same column turns round, another starts ascending.
BrowserSort columnClick(BrowserSort sort, BrowserColumn column);

// The rows of listing in the order in which they are shown, as indexes into its entries: "..", directories,
// links, files, and within each of these by the texts of the chosen column in the chosen direction. Texts
// are compared without regard to case. Sizes are ordered as
// numbers, behind them as texts those that are none. Rows that are equal keep the listing's order in both
// directions.
std::vector<std::uint32_t> displayOrder(const BrowserListing& listing, BrowserSort sort);

} // namespace corvel

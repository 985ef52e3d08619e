#pragma once

#include "browser/Listing.h"
#include "common/TextEncoding.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
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

// Finds that order in steps, none of which takes more than a few milliseconds: the rows are ordered in runs,
// and the runs are merged.
class Ordering {
  public:
    explicit Ordering(BrowserSort sort) : sort_(sort) {}

    BrowserSort sort() const { return sort_; }
    // Goes on; true once the order is found. listing: the same in each call.
    bool step(const BrowserListing& listing);
    std::vector<std::uint32_t> order() const;

  private:
    // What a row is ordered by: group, first, second, then text. The numbers spare nearly every look at the
    // texts: with these alone 100,000 names take twice as long.
    struct Key {
        std::uint64_t first = 0;
        std::uint64_t second = 0;
        std::string_view text = {};
        std::uint32_t row = 0;
        std::uint32_t group = 0;
    };

    Key keyOf(const BrowserEntry& entry, std::string_view text, std::uint32_t row) const;
    bool comesBefore(const Key& left, const Key& right) const;
    void orderNextRun(const BrowserListing& listing);

    BrowserSort sort_;
    std::vector<std::string> texts_; // of each run, one behind the other
    std::vector<Key> keys_;
    std::size_t run_ = 0;    // how long the runs are that are merged now,
    std::size_t merged_ = 0; // and up to where that is done
};

} // namespace corvel

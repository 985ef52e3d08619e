#include "browser/Order.h"

#include "common/Text.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>

namespace corvel {

namespace {

constexpr std::size_t firstRun = 16384;

} // namespace

BrowserSort columnClick(BrowserSort sort, BrowserColumn column) {
    const bool turns = sort.column == column && sort.order == SortOrder::ascending;
    return {column, turns ? SortOrder::descending : SortOrder::ascending};
}

Ordering::Key Ordering::keyOf(const BrowserEntry& entry, std::string_view text, std::uint32_t row) const {
    const auto group = static_cast<std::uint32_t>(typeKey(entry));
    if (sort_.column == BrowserColumn::size) {
        constexpr std::uint64_t last = std::numeric_limits<std::uint64_t>::max();
        return {sizeNumber(entry.size).value_or(last), 0, text, row, group};
    }
    return {eightBytes(text, 0), eightBytes(text, sizeof(std::uint64_t)), text, row, group};
}

bool Ordering::comesBefore(const Key& left, const Key& right) const {
    if (left.group != right.group) {
        return left.group < right.group;
    }
    const bool isAscending = sort_.order == SortOrder::ascending;
    const Key& low = isAscending ? left : right;
    const Key& high = isAscending ? right : left;
    if (low.first != high.first) {
        return low.first < high.first;
    }
    return low.second != high.second ? low.second < high.second : low.text < high.text;
}

void Ordering::orderNextRun(const BrowserListing& listing) {
    const std::size_t start = keys_.size();
    const std::size_t end = std::min(start + firstRun, listing.entries.size());
    std::string& texts = texts_.emplace_back();
    std::size_t bytes = 0; // long names grow to nothing that is longer than they are
    for (std::size_t row = start; row < end; ++row) {
        bytes += listedText(listing.entries[row], sort_.column).size();
    }
    texts.reserve(bytes);
    std::vector<std::size_t> ends;
    ends.reserve(end - start);
    for (std::size_t row = start; row < end; ++row) {
        const BrowserEntry& entry = listing.entries[row];
        // Sizes are ordered as numbers where they are any.
        if (sort_.column != BrowserColumn::size || !sizeNumber(entry.size)) {
            appendFolded(texts, listedText(entry, sort_.column));
        }
        ends.push_back(texts.size());
    }
    std::size_t textStart = 0;
    for (std::size_t row = start; row < end; ++row) {
        const std::size_t textEnd = ends[row - start];
        const std::string_view text = std::string_view(texts).substr(textStart, textEnd - textStart);
        keys_.push_back(keyOf(listing.entries[row], text, static_cast<std::uint32_t>(row)));
        textStart = textEnd;
    }
    std::stable_sort(keys_.begin() + static_cast<std::ptrdiff_t>(start), keys_.end(),
                     [this](const Key& left, const Key& right) { return comesBefore(left, right); });
}

bool Ordering::step(const BrowserListing& listing) {
    if (keys_.size() < listing.entries.size()) {
        texts_.reserve(listing.entries.size() / firstRun + 1); // the keys point into short ones, too
        keys_.reserve(listing.entries.size());
        orderNextRun(listing);
        run_ = firstRun;
        return keys_.size() == listing.entries.size() && run_ >= keys_.size();
    }
    const auto at = [this](std::size_t row) {
        return keys_.begin() + static_cast<std::ptrdiff_t>(std::min(row, keys_.size()));
    };
    if (merged_ + run_ < keys_.size()) {
        std::inplace_merge(at(merged_), at(merged_ + run_), at(merged_ + 2 * run_),
                           [this](const Key& left, const Key& right) { return comesBefore(left, right); });
        merged_ += 2 * run_;
    }
    if (merged_ + run_ >= keys_.size()) {
        run_ *= 2;
        merged_ = 0;
    }
    return run_ >= keys_.size();
}

std::vector<std::uint32_t> Ordering::order() const {
    std::vector<std::uint32_t> order;
    order.reserve(keys_.size());
    std::ranges::transform(keys_, std::back_inserter(order), &Key::row);
    return order;
}

std::vector<std::uint32_t> displayOrder(const BrowserListing& listing, BrowserSort sort) {
    Ordering ordering(sort);
    while (!ordering.step(listing)) {
    }
    return ordering.order();
}

} // namespace corvel

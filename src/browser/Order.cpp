#include "browser/Order.h"

#include "browser/KeySort.h"
#include "common/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <optional>
#include <span>
#include <string>

namespace corvel {

namespace {

constexpr int typeKeyCount = 4;
// So many digits fit into 64 bits whatever they are.
constexpr std::size_t mostDigits = 19;
// A key holds so many bytes of a text, and in its last byte how many of them the text had.
constexpr std::size_t bytesPerKey = 7;

std::string_view cellBytes(const BrowserEntry& entry, BrowserColumn column) {
    switch (column) {
    case BrowserColumn::date:
        return entry.date;
    case BrowserColumn::owner:
        return entry.owner;
    case BrowserColumn::group:
        return entry.group;
    case BrowserColumn::access:
        return entry.access;
    default:
        return entry.name;
    }
}

// The texts of one column, folded, one behind the other.
class FoldedTexts {
  public:
    explicit FoldedTexts(TextEncoding encoding) : encoding_(encoding) {}

    void reserve(std::size_t texts, std::size_t bytes) {
        ends_.reserve(texts);
        text_.reserve(bytes);
    }

    void add(std::string_view bytes) {
        const std::size_t start = text_.size();
        text_ += bytes;
        bool isAscii = true;
        for (std::size_t i = start; i < text_.size(); ++i) {
            const char byte = text_[i];
            isAscii = isAscii && static_cast<unsigned char>(byte) < 0x80;
            text_[i] = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
        }
        if (!isAscii) {
            text_.resize(start);
            text_ += foldCase(toUtf8(bytes, encoding_));
        }
        ends_.push_back(text_.size());
    }

    std::string_view operator[](std::size_t row) const {
        const std::size_t start = row == 0 ? 0 : ends_[row - 1];
        return std::string_view(text_).substr(start, ends_[row] - start);
    }

  private:
    TextEncoding encoding_;
    std::string text_;
    std::vector<std::size_t> ends_;
};

FoldedTexts foldColumn(const BrowserListing& listing, BrowserColumn column, TextEncoding encoding,
                       std::string_view groupSeparator) {
    FoldedTexts texts(encoding);
    if (column == BrowserColumn::size) {
        for (std::size_t row = 0; row < listing.entries.size(); ++row) {
            texts.add(cellText(listing, row, column, groupSeparator));
        }
        return texts;
    }
    std::size_t bytes = 0;
    for (const BrowserEntry& entry : listing.entries) {
        bytes += cellBytes(entry, column).size();
    }
    texts.reserve(listing.entries.size(), bytes);
    for (const BrowserEntry& entry : listing.entries) {
        texts.add(cellBytes(entry, column));
    }
    return texts;
}

// The bytes of text from depth on as a number that orders as they do. Of two texts with the same bytes
// here, one that ends comes before one that goes on, zero bytes included.
std::uint64_t textKey(std::string_view text, std::size_t depth) {
    const std::size_t left = text.size() - depth;
    const std::size_t length = std::min(left, bytesPerKey);
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < bytesPerKey; ++i) {
        key = key << 8U | (i < length ? static_cast<unsigned char>(text[depth + i]) : 0U);
    }
    return key << 8U | std::min(left, bytesPerKey + 1);
}

bool textGoesOn(std::uint64_t key) {
    return (key & 0xFFU) > bytesPerKey;
}

// Orders rows by texts: by their first bytes, then each run of rows that are equal so far by the next ones.
void orderByText(std::span<KeyedRow> rows, const FoldedTexts& texts, std::uint64_t flip) {
    struct Run {
        std::size_t first;
        std::size_t count;
        std::size_t depth;
    };
    std::vector<Run> runs = {{0, rows.size(), 0}};
    while (!runs.empty()) {
        const Run run = runs.back();
        runs.pop_back();
        const std::span<KeyedRow> part = rows.subspan(run.first, run.count);
        for (KeyedRow& keyed : part) {
            keyed.key = textKey(texts[keyed.row], run.depth) ^ flip;
        }
        sortByKey(part);
        for (std::size_t i = 0; i < part.size();) {
            std::size_t end = i + 1;
            while (end < part.size() && part[end].key == part[i].key) {
                ++end;
            }
            if (end - i > 1 && textGoesOn(part[i].key ^ flip)) {
                runs.push_back({run.first + i, end - i, run.depth + bytesPerKey});
            }
            i = end;
        }
    }
}

// The number that digits spell, if they are all digits, few enough, and without a leading zero. Cells of
// such sizes order as the numbers do: the shorter one has more blanks in front.
std::optional<std::uint64_t> plainNumber(std::string_view digits) {
    if (digits.empty() || digits.size() > mostDigits || (digits.front() == '0' && digits.size() > 1)) {
        return std::nullopt;
    }
    std::uint64_t number = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') {
            return std::nullopt;
        }
        number = number * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    return number;
}

// Gives every row the number of its size as key; false when a size is not that simple.
bool setSizeKeys(std::span<KeyedRow> rows, const BrowserListing& listing, std::uint64_t flip) {
    for (KeyedRow& keyed : rows) {
        const std::optional<std::uint64_t> number = plainNumber(listing.entries[keyed.row].size);
        if (!number) {
            return false;
        }
        keyed.key = *number ^ flip;
    }
    return true;
}

struct Groups {
    std::vector<KeyedRow> rows; // grouped by type key, each group in the listing's order
    std::array<std::size_t, typeKeyCount> sizes{};
};

Groups groupByTypeKey(const BrowserListing& listing) {
    Groups groups;
    for (const BrowserEntry& entry : listing.entries) {
        ++groups.sizes[static_cast<std::size_t>(typeKey(entry))];
    }
    std::array<std::size_t, typeKeyCount> next{};
    std::exclusive_scan(groups.sizes.begin(), groups.sizes.end(), next.begin(), std::size_t{0});
    groups.rows.resize(listing.entries.size());
    for (std::size_t row = 0; row < listing.entries.size(); ++row) {
        const auto key = static_cast<std::size_t>(typeKey(listing.entries[row]));
        groups.rows[next[key]++].row = static_cast<std::uint32_t>(row);
    }
    return groups;
}

template <typename OrderGroup>
void forEachGroup(Groups& groups, OrderGroup orderGroup) {
    std::size_t first = 0;
    for (const std::size_t size : groups.sizes) {
        orderGroup(std::span<KeyedRow>(groups.rows).subspan(first, size));
        first += size;
    }
}

} // namespace

BrowserSort columnClick(BrowserSort sort, BrowserColumn column) {
    const bool turns = sort.column == column && sort.order == SortOrder::ascending;
    return {column, turns ? SortOrder::descending : SortOrder::ascending};
}

std::vector<std::uint32_t> displayOrder(const BrowserListing& listing, BrowserSort sort,
                                        TextEncoding encoding, std::string_view groupSeparator) {
    // Flipping the bits of every key turns the order round and leaves equal rows as they are.
    const std::uint64_t flip = sort.order == SortOrder::descending ? ~std::uint64_t{0} : 0;
    Groups groups = groupByTypeKey(listing);
    if (sort.column == BrowserColumn::size && setSizeKeys(groups.rows, listing, flip)) {
        forEachGroup(groups, sortByKey);
    } else if (sort.column != BrowserColumn::typeKey) {
        const FoldedTexts texts = foldColumn(listing, sort.column, encoding, groupSeparator);
        forEachGroup(groups, [&](std::span<KeyedRow> rows) { orderByText(rows, texts, flip); });
    }
    std::vector<std::uint32_t> order(groups.rows.size());
    std::ranges::transform(groups.rows, order.begin(), &KeyedRow::row);
    return order;
}

} // namespace corvel

#include "browser/Order.h"

#include "common/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace corvel {
namespace {

using Column = BrowserColumn;
using Type = BrowserEntryType;

// Entries that point into texts of the test.
BrowserListing listingOf(std::vector<BrowserEntry> entries) {
    BrowserListing listing;
    for (const BrowserEntry& entry : entries) {
        listing.longestSize = std::max(listing.longestSize, entry.size.size());
    }
    listing.entries = std::move(entries);
    return listing;
}

std::string shownNames(const BrowserListing& listing, BrowserSort sort, TextEncoding encoding) {
    std::string names;
    for (const std::uint32_t row : displayOrder(listing, sort, encoding)) {
        names += names.empty() ? "" : " ";
        names += listing.entries[row].name;
    }
    return names;
}

TEST(Order, GroupsByTypeThenSortsTheColumn) {
    const BrowserListing listing = listingOf({
        {.name = "b", .date = "02/1 2020", .owner = "Ann", .size = "20", .type = Type::file},
        {.name = "A", .date = "01/1 2021", .owner = "ann", .size = "100", .type = Type::file},
        {.name = "z", .date = "12/1 2019", .owner = "bob", .size = "9", .type = Type::directory},
        {.name = "..", .date = "03/1 2019", .owner = "zed", .size = "4096", .type = Type::directory},
        {.name = "l", .date = "03/1 2019", .owner = "zed", .size = "3", .type = Type::link},
        {.name = "C", .date = "03/1 2019", .owner = "ANN", .size = "3", .type = Type::file},
        {.name = "K", .date = "12/1 2018", .owner = "bob", .size = "10", .type = Type::link},
    });
    struct Case {
        const char* name;
        BrowserSort sort;
        const char* shown;
    };
    const std::vector<Case> cases = {
        {"name", {Column::name, SortOrder::ascending}, ".. z K l A b C"},
        {"name, turned", {Column::name, SortOrder::descending}, ".. z l K C b A"},
        {"size", {Column::size, SortOrder::ascending}, ".. z l K C b A"},
        {"size, turned", {Column::size, SortOrder::descending}, ".. z K l A b C"},
        {"date", {Column::date, SortOrder::ascending}, ".. z l K A b C"},
        {"owner, turned, ties too", {Column::owner, SortOrder::descending}, ".. z l K b A C"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(shownNames(listing, row.sort, TextEncoding::utf8), row.shown) << row.name;
    }
}

TEST(Order, ReadsNamesInTheirEncoding) {
    const BrowserListing utf8 = listingOf({{.name = "\u00C9s"}, {.name = "\u00E9r"}, {.name = "z"}});
    EXPECT_EQ(shownNames(utf8, {}, TextEncoding::utf8), "z \u00E9r \u00C9s");
    const BrowserListing oneByte = listingOf({{.name = "\xC9s"}, {.name = "\xE9r"}, {.name = "\x80"}});
    EXPECT_EQ(shownNames(oneByte, {}, TextEncoding::windows1252), "\xE9r \xC9s \x80");
}

// What displayOrder has to give, by one stable sort on whole texts.
std::vector<std::uint32_t> plainOrder(const BrowserListing& listing, BrowserSort sort) {
    std::vector<std::uint32_t> order(listing.entries.size());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::stable_sort(order, [&](std::uint32_t left, std::uint32_t right) {
        const int leftKey = typeKey(listing.entries[left]);
        const int rightKey = typeKey(listing.entries[right]);
        if (leftKey != rightKey) {
            return leftKey < rightKey;
        }
        const int compared = foldCase(cellText(listing, left, sort.column, ","))
                                 .compare(foldCase(cellText(listing, right, sort.column, ",")));
        return sort.order == SortOrder::ascending ? compared < 0 : compared > 0;
    });
    return order;
}

std::string randomText(std::mt19937& random, std::string_view alphabet, std::size_t mostBytes) {
    std::string text;
    for (std::size_t length = random() % (mostBytes + 1); length > 0; --length) {
        text += alphabet[random() % alphabet.size()];
    }
    return text;
}

TEST(Order, IsAStableSortOfTheCells) {
    struct Case {
        const char* name;
        std::size_t rows;
        std::string_view nameAlphabet; // with a long common beginning, so that keys run out
        std::string_view sizeAlphabet;
        std::size_t mostDigits;
    };
    const std::vector<Case> cases = {
        {"few rows", 60, "abAB1", "1234", 6},
        {"many rows", 3000, "abAB1", "1234", 6},
        {"sizes with leading zeros", 3000, "ab", "01", 8},
        {"sizes beyond 64 bits", 1000, "ab", "129", 40},
        {"sizes that are no numbers", 1000, "ab", "1k,.\x01\xC3", 4},
        {"zero bytes in names", 1000, std::string_view("a\0", 2), "5", 3},
        {"many equal rows", 3000, "a", "1", 2},
    };
    for (const Case& row : cases) {
        std::mt19937 random(7); // NOLINT: the same rows in every run
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < 2 * row.rows; i += 2) {
            texts.push_back((random() % 2 == 0 ? "the same start " : "") +
                            randomText(random, row.nameAlphabet, 20));
            texts.push_back(randomText(random, row.sizeAlphabet, row.mostDigits));
        }
        std::vector<BrowserEntry> entries;
        for (std::size_t i = 0; i < texts.size(); i += 2) {
            entries.push_back(
                {.name = texts[i], .size = texts[i + 1], .type = static_cast<Type>(random() % 3)});
        }
        const BrowserListing listing = listingOf(std::move(entries));
        for (const Column column : {Column::name, Column::size}) {
            for (const SortOrder order : {SortOrder::ascending, SortOrder::descending}) {
                const BrowserSort sort = {column, order};
                EXPECT_EQ(displayOrder(listing, sort, TextEncoding::utf8), plainOrder(listing, sort))
                    << row.name << ", column " << static_cast<int>(column) << ", order "
                    << static_cast<int>(order);
            }
        }
    }
}

TEST(Order, TurnsRoundOnTheSecondClick) {
    using enum SortOrder;
    EXPECT_EQ(columnClick({Column::name, ascending}, Column::name), (BrowserSort{Column::name, descending}));
    EXPECT_EQ(columnClick({Column::size, descending}, Column::size), (BrowserSort{Column::size, ascending}));
    EXPECT_EQ(columnClick({Column::size, descending}, Column::date), (BrowserSort{Column::date, ascending}));
}

} // namespace
} // namespace corvel

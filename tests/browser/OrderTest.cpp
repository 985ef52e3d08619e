#include "browser/Order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using Column = BrowserColumn;
using Type = BrowserEntryType;

// Entries that point into texts of the test.
BrowserListing listingOf(std::vector<BrowserEntry> entries) {
    BrowserListing listing;
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

// Beyond the bytes that a row is first ordered by, and where two rows differ in nothing.
TEST(Order, ComparesTextsToTheirEnd) {
    const std::string same = "the same sixteen bytes ";
    const std::vector<std::string> names = {same + "b", same + "a", same, "the", same + std::string(1, '\0'),
                                            same + "B"};
    std::vector<BrowserEntry> entries;
    for (const std::string& name : names) {
        entries.push_back({.name = name, .type = Type::file});
    }
    const BrowserListing listing = listingOf(std::move(entries));
    using Rows = std::vector<std::uint32_t>;
    EXPECT_EQ(displayOrder(listing, {}, TextEncoding::utf8), (Rows{3, 2, 4, 1, 0, 5}));
    EXPECT_EQ(displayOrder(listing, {Column::name, SortOrder::descending}, TextEncoding::utf8),
              (Rows{0, 5, 1, 4, 2, 3}));
}

TEST(Order, TakesSizesAsNumbersBeforeWhatIsNone) {
    const std::string huge(60000, '9');
    const BrowserListing listing = listingOf({{.name = "word", .size = "4k"},
                                              {.name = "huge", .size = huge},
                                              {.name = "most", .size = "18446744073709551615"},
                                              {.name = "twelve", .size = "0012"},
                                              {.name = "none"},
                                              {.name = "nine", .size = "9"}});
    EXPECT_EQ(shownNames(listing, {Column::size, SortOrder::ascending}, TextEncoding::utf8),
              "nine twelve most none word huge");
}

TEST(Order, TurnsRoundOnTheSecondClick) {
    using enum SortOrder;
    EXPECT_EQ(columnClick({Column::name, ascending}, Column::name), (BrowserSort{Column::name, descending}));
    EXPECT_EQ(columnClick({Column::size, descending}, Column::size), (BrowserSort{Column::size, ascending}));
    EXPECT_EQ(columnClick({Column::size, descending}, Column::date), (BrowserSort{Column::date, ascending}));
}

} // namespace
} // namespace corvel

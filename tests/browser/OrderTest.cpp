#include "browser/Order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using Column = BrowserColumn;
using Type = BrowserEntryType;
using enum SortOrder;

// The names of entries in the order in which they are shown.
std::string shown(std::vector<BrowserEntry> entries, BrowserSort sort = {}) {
    BrowserListing listing;
    listing.entries = std::move(entries);
    std::string names;
    for (const std::uint32_t row : displayOrder(listing, sort)) {
        names.append(names.empty() ? "" : " ").append(listing.entries[row].name);
    }
    return names;
}

TEST(Order, GroupsByTypeThenSortsTheColumn) {
    const std::vector<BrowserEntry> entries = {
        {.name = "b", .date = "02/1 2020", .owner = "Ann", .size = "20", .type = Type::file},
        {.name = "A", .date = "01/1 2021", .owner = "ann", .size = "100", .type = Type::file},
        {.name = "z", .date = "12/1 2019", .owner = "bob", .size = "9", .type = Type::directory},
        {.name = "..", .date = "03/1 2019", .owner = "zed", .size = "4096", .type = Type::directory},
        {.name = "l", .date = "03/1 2019", .owner = "zed", .size = "3", .type = Type::link},
        {.name = "C", .date = "03/1 2019", .owner = "ANN", .size = "3", .type = Type::file},
        {.name = "K", .date = "12/1 2018", .owner = "bob", .size = "10", .type = Type::link},
    };
    EXPECT_EQ(shown(entries, {Column::name, ascending}), ".. z K l A b C");
    EXPECT_EQ(shown(entries, {Column::name, descending}), ".. z l K C b A");
    EXPECT_EQ(shown(entries, {Column::size, ascending}), ".. z l K C b A");
    EXPECT_EQ(shown(entries, {Column::owner, descending}), ".. z l K b A C") << "ties as sent";
}

TEST(Order, ComparesWholeTextsInTheirEncodingAndSizesAsNumbers) {
    EXPECT_EQ(shown({{.name = "\u00C9s"}, {.name = "\u00E9r"}, {.name = "z"}}), "z \u00E9r \u00C9s");
    EXPECT_EQ(shown({{.name = "\xC9s"}, {.name = "\xE9r"}, {.name = "\x80"}}), "\xE9r \xC9s \x80");
    const std::string huge(60000, '9');
    EXPECT_EQ(shown({{.name = "word", .size = "4k"},
                     {.name = "huge", .size = huge},
                     {.name = "most", .size = "18446744073709551615"},
                     {.name = "twelve", .size = "0012"},
                     {.name = "nine", .size = "9"}},
                    {Column::size, ascending}),
              "nine twelve most word huge");
}

} // namespace
} // namespace corvel

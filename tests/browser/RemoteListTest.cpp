#include "browser/RemoteList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using Since = RemoteList::Since;

// So many files of one name, and "z".
BrowserListing files(std::size_t count) {
    BrowserListing listing;
    listing.entries.assign(count, {.name = "file", .type = BrowserEntryType::file});
    listing.entries.push_back({.name = "z", .type = BrowserEntryType::file});
    return listing;
}

TEST(RemoteList, SaysWhyNothingCanBeDoneWithItsRows) {
    RemoteList list;
    const auto says = [&list](const char* part) {
        return whyNotUsable(list).find(part) != std::string_view::npos;
    };
    EXPECT_TRUE(says("no directory"));
    list.since = Since::movedAway;
    EXPECT_TRUE(says("another directory"));
    list.since = Since::connectionEnded;
    EXPECT_TRUE(says("connection ended"));
    list.since = Since::listed;
    EXPECT_EQ(whyNotUsable(list), "");
    list.navigations = 1;
    EXPECT_TRUE(says("on its way"));
}

TEST(RemoteList, KeepsTheSelectedEntryInTheSameDirectory) {
    struct Row {
        Since since;
        const char* directory;
        std::size_t others; // beside the entry
        int row;
    };
    const std::vector<Row> table = {
        {Since::listed, "/pub", 5, 5},
        {Since::listed, "/pub", 30000, 30000}, // a long list is ordered later
        {Since::listed, "/other", 5, -1},
        {Since::movedAway, "/pub", 5, -1}, // nobody knows which directory
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.directory + std::to_string(row.others));
        RemoteList list;
        dropRows(list, "/pub");
        showListing(list, files(3));
        list.row = 3;
        list.since = row.since;
        dropRows(list, row.directory);
        EXPECT_EQ(entryAt(list, 0), nullptr);
        showListing(list, files(row.others));
        EXPECT_EQ(list.isArranged, row.others < 30000);
        EXPECT_EQ(entryAt(list, 0) != nullptr, list.isArranged);
        arrange(list);
        EXPECT_EQ(list.row, row.row);
        EXPECT_EQ(whyNotUsable(list), "");
    }
}

} // namespace
} // namespace corvel

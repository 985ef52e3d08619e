#include "browser/RemoteList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using Since = RemoteList::Since;

// A listing of files; their texts are the test's.
BrowserListing files(std::size_t count, std::string_view last) {
    BrowserListing listing;
    listing.entries.assign(count, {.name = "file", .type = BrowserEntryType::file});
    listing.entries.push_back({.name = last, .type = BrowserEntryType::file});
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
        const char* name;
        Since since;
        const char* directory;
        const char* entry; // beside the others
        std::size_t others;
        int row;
    };
    const std::vector<Row> table = {
        {"listed again", Since::listed, "/pub", "z", 5, 5},
        {"in a long list, ordered later", Since::listed, "/pub", "z", 30000, 30000},
        {"another directory", Since::listed, "/other", "z", 5, -1},
        {"nobody knows which directory", Since::movedAway, "/pub", "z", 5, -1},
    };
    for (const Row& row : table) {
        RemoteList list;
        dropRows(list, "/pub");
        showListing(list, files(3, "z"), TextEncoding::utf8);
        list.row = 3;
        list.since = row.since;
        dropRows(list, row.directory);
        EXPECT_EQ(entryAt(list, 0), nullptr);
        showListing(list, files(row.others, row.entry), TextEncoding::utf8);
        EXPECT_EQ(list.isArranged, row.others < 30000) << row.name;
        EXPECT_EQ(entryAt(list, 0) != nullptr, list.isArranged) << row.name;
        arrange(list, TextEncoding::utf8);
        EXPECT_EQ(list.row, row.row) << row.name;
        EXPECT_EQ(list.listings, 2U);
        EXPECT_EQ(whyNotUsable(list), "") << row.name;
    }
}

TEST(RemoteList, KnowsWhatLeadsElsewhere) {
    for (const char* const command : {"cwd x", "CDUP", "xcwd /a b"}) {
        EXPECT_TRUE(changesDirectory(command)) << command;
    }
    for (const char* const command : {"", "XCWDS", "SITE CWD"}) {
        EXPECT_FALSE(changesDirectory(command)) << command;
    }
}

} // namespace
} // namespace corvel

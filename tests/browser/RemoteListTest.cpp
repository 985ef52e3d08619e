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
    struct Row {
        Since since;
        int navigations;
        const char* why; // a part of it; empty where the rows are usable
    };
    const std::vector<Row> table = {
        {Since::listed, 0, ""},
        {Since::listed, 1, "on its way"},
        {Since::neverListed, 0, "no directory"},
        {Since::movedAway, 0, "another directory"},
        {Since::connectionEnded, 0, "connection ended"},
    };
    for (const Row& row : table) {
        RemoteList list;
        list.since = row.since;
        list.navigations = row.navigations;
        const std::string_view why = whyNotUsable(list);
        EXPECT_EQ(why.empty(), *row.why == '\0') << row.why;
        EXPECT_NE(why.find(row.why), std::string_view::npos) << row.why;
    }
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
        {"the entry is gone", Since::listed, "/pub", "y", 5, -1},
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
    for (const char* const command : {"CWD /", "cwd x", "CDUP", "xcwd /a b"}) {
        EXPECT_TRUE(changesDirectory(command)) << command;
    }
    for (const char* const command : {"", "PWD", "XCWDS", "SITE CWD", "MKD CWD"}) {
        EXPECT_FALSE(changesDirectory(command)) << command;
    }
}

} // namespace
} // namespace corvel

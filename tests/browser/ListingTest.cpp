#include "browser/Listing.h"

#include "browser/Order.h"
#include "browser/RemoteList.h"
#include "common/Bounds.h"
#include "common/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

// A line as some server lists it and the entry that it is read as: type, access, owner, group, size, date
// and name between bars; empty for a line that is no entry.
struct ListingSample {
    const char* name;
    std::string line;
    std::string entry;
    std::string merged = entry; // with blanks merged
};

const std::vector<ListingSample> samples = {
    {"file", "-rw-r--r-- 1 bob staff 512 Jan 5 12:34 readme.txt",
     "2|-rw-r--r--|bob|staff|512|01/5 12:34|readme.txt"},
    {"link", "lrwxrwxrwx 1 u g 10 Jan 5 12:00 name -> /target",
     "1|lrwxrwxrwx|u|g|10|01/5 12:00|name -> /target"},
    {"parent", "drwxr-xr-x 2 root root 4096 Dec 31 23:59 ..", "0|drwxr-xr-x|root|root|4096|12/31 23:59|.."},
    {"the directory itself", "drwxr-xr-x 2 root root 4096 Dec 31 23:59 .", ""},
    {"padded numbers", "drwxr-xr-x    2 0        0            4096 Jan 05 12:00 files",
     "0|drwxr-xr-x|0|0|4096|01/05 12:00|files"},
    {"padded day", "-rw-r--r-- 1 u g 1 Jan  5 12:34 f", "2|-rw-r--r--|u|g|1|01/ 5|12:34 f",
     "2|-rw-r--r--|u|g|1|01/5 12:34|f"},
    {"padded year", "-rw-r--r-- 1 u g 1 Nov 15  2019 f", "2|-rw-r--r--|u|g|1|11/15 |2019 f",
     "2|-rw-r--r--|u|g|1|11/15 2019|f"},
    {"links padded on the right shift the owner away", "-rw-r--r-- 1  bob staff 512 Jan 5 12:34 f",
     "2|-rw-r--r--||bob|staff|/Jan 5|12:34 f"},
    {"tabs are no blanks", "-rw-r--r--\t1\tu\tg\t1\tJan\t5\t12:34\tf", ""},
    {"leading blank", " drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 incoming",
     "0|drwxr-xr-x|ftp|ftp|4096|10/10 10:10|incoming"},
    {"two leading blanks", "  drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 incoming", ""},
    {"size beyond 64 bits", "-rw-r--r-- 1 u g 99999999999999999999999 Jan 5 12:00 big",
     "2|-rw-r--r--|u|g|99999999999999999999999|01/5 12:00|big"},
    {"blanks inside", "-rw-r--r-- 1 u g 1 Jan 5 12:00 a  b   c", "2|-rw-r--r--|u|g|1|01/5 12:00|a  b   c"},
    {"looks like an entry", "-rw-r--r-- 1 u g 1 Jan 5 12:00 -rw-r--r-- 1 u g 1 Jan 5 12:00 f",
     "2|-rw-r--r--|u|g|1|01/5 12:00|-rw-r--r-- 1 u g 1 Jan 5 12:00 f"},
    {"header that looks like an entry", "211-Status of / a b 5 c d e f", ""},
    {"empty", "", ""},
};

BrowserListing parse(const std::vector<std::string>& lines, bool mergeBlanks = false) {
    return ParseDirectoryListing(std::vector<std::string_view>(lines.begin(), lines.end()),
                                 {.mergeBlanks = mergeBlanks});
}

// The texts of the entries between bars, to compare and to print.
std::string listingText(const BrowserListing& listing) {
    std::string text;
    for (const BrowserEntry& entry : listing.entries) {
        text += text.empty() ? "" : "\n";
        text += join({std::to_string(static_cast<int>(entry.type)), entry.access, entry.owner, entry.group,
                      entry.size, entry.date, entry.name},
                     "|");
    }
    return text;
}

// Whether a line is an entry, by the pattern itself; the parser goes over the bytes once instead.
bool isEntry(std::string_view line) {
    const auto matches = [](std::string_view text) {
        return !text.starts_with("211 ") && !text.starts_with("211-") &&
               matchesPattern(text, "?????????? * ?* ?* *# ?* ?* ?* ?*");
    };
    return matches(line) || (line.starts_with(' ') && matches(line.substr(1)));
}

TEST(Listing, ReadsTheLinesOfManyServers) {
    for (const ListingSample& sample : samples) {
        EXPECT_EQ(listingText(parse({sample.line})), sample.entry) << sample.name;
        EXPECT_EQ(listingText(parse({sample.line}, true)), sample.merged) << sample.name << ", merged";
        for (std::size_t cut = 0; cut <= sample.line.size(); ++cut) {
            const std::string start = sample.line.substr(0, cut);
            ASSERT_EQ(parse({start}).isRecognised, isEntry(start)) << start;
        }
    }
}

TEST(Listing, CountsEntriesByWhatTheyAreAndOwnsTheirText) {
    std::vector<std::string> lines = {
        "drwxr-xr-x 9 u g 123456789 Jan 5 12:00 .", "drwxr-xr-x 9 u g 1 Jan 5 12:00 ..",
        "brw-rw---- 1 u g 8, 0 Jan 5 12:00 sda",    "lrwxrwxrwx 1 u g 1 Jan 5 12:00 a -> b",
        "-rw-r--r-- 1 u g 1 Jan 5 12:00 f",
    };
    BrowserListing first = parse(lines);
    lines.back().assign(lines.back().size(), '#');
    const BrowserListing listing = std::move(first);
    EXPECT_EQ(listing.directoryCount, 1U);
    EXPECT_EQ(listing.fileCount, 2U);
    EXPECT_EQ(listing.longestSize, 9U) << "the size of \".\" counts for the padding";
    std::string keys;
    for (const BrowserEntry& entry : listing.entries) {
        keys += std::to_string(typeKey(entry)) + std::to_string(imageIndex(entry)) + " ";
    }
    EXPECT_EQ(keys, "01 11 22 33 ");
    EXPECT_TRUE(listingText(listing).ends_with("2|-rw-r--r--|u|g|1|01/5 12:00|f"));
}

TEST(Listing, PadsSizesSoThatTheyLineUp) {
    const std::string huge(60000, '9');
    const BrowserListing listing = parse({
        "-rw-r--r-- 1 u g 5 Jan 5 12:00 short",
        "-rw-r--r-- 1 u g 1234567 Jan 5 12:00 longest",
        "-rw-r--r-- 1 u g 007 Jan 5 12:00 zeros",
        "-rw-r--r-- 1 u g 4k 8 Jan 5 12:00 no number",
        "-rw-r--r-- 1 u g " + huge + " Jan 5 12:00 huge",
    });
    const std::vector<std::string> cells = {"       5", " 1,234,567", "     7", "4k", huge};
    for (std::size_t row = 0; row < cells.size(); ++row) {
        EXPECT_EQ(cellText(listing, row, BrowserColumn::size, ","), cells[row]) << listing.entries[row].name;
    }
}

TEST(Listing, KeepsTheFirstLinesThatItDoesNotUnderstand) {
    std::vector<std::string> lines = {"213-Status of /:", "total 12", "", "211-x",
                                      "-rw-r--r-- 1 u g 1 Jan 5 12:00 f"};
    lines.insert(lines.end(), mostStrangeLines + 2, "01-05-24  12:00PM  <DIR>  " + std::string(1000, 'x'));
    lines.insert(lines.end(), {"213-inside", "213 End", ""});
    const BrowserListing listing = parse(lines);
    EXPECT_EQ(listing.strangeCount, mostStrangeLines + 3);
    ASSERT_EQ(listing.strangeLines.size(), mostStrangeLines);
    EXPECT_EQ(listing.strangeLines.front().size(), 300U);
}

TEST(Listing, TakesNoMoreEntriesThanAListCanShow) {
    const BrowserListing listing =
        parse(std::vector<std::string>(mostRecords + 2, "-rw-r--r-- 1 u g 1 Jan 5 12:00 f"));
    EXPECT_EQ(listing.entries.size(), mostRecords);
    EXPECT_EQ(listing.tooMany, 2U);
    EXPECT_EQ(listing.fileCount, mostRecords + 2);
    const auto taken = [](std::size_t nameSize) {
        return parse(std::vector<std::string>(200000, "-rw-r--r-- 1 user staff 4099123 Jan 5 12:30 " +
                                                          std::string(nameSize, 'n')))
            .entries.size();
    };
    EXPECT_EQ(taken(70), 200000U);
    EXPECT_LT(taken(200) * (sizeof(BrowserEntry) + 2 * 200), mostRecordBytes);
}

TEST(Listing, SeesThatAServerPadsItsLines) {
    const std::vector<std::pair<std::string, bool>> dates = {
        {"Jan  5 12:34 f", true},      {"Nov 15  2019 f", true},
        {"Jan  5  2019 f", true},      {"Jan 5 12:34  f", false}, // the name begins with a blank
        {"Jan 5 12:34 2019 f", false}, {"Jan  x y", false}};
    for (const auto& [date, isPadded] : dates) {
        EXPECT_EQ(parse({"-rw-r--r-- 1 u g 1 " + date}).looksPadded, isPadded) << date;
        EXPECT_FALSE(parse({"-rw-r--r-- 1 u g 1 " + date}, true).looksPadded) << date;
    }
}

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

TEST(Order, FindsTheSameInSteps) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < 40000; ++i) {
        names.push_back(std::to_string(i * 7919 % 30000));
    }
    BrowserListing listing;
    for (const std::string& name : names) {
        listing.entries.push_back({.name = name, .type = Type::file});
    }
    for (const SortOrder order : {ascending, descending}) {
        const std::vector<std::uint32_t> rows = displayOrder(listing, {Column::name, order});
        ASSERT_EQ(rows.size(), names.size());
        for (std::size_t i = 1; i < rows.size(); ++i) {
            const int isBefore = names[rows[i - 1]].compare(names[rows[i]]);
            ASSERT_TRUE(isBefore == 0 ? rows[i - 1] < rows[i] : (isBefore < 0) == (order == ascending)) << i;
        }
    }
}

using Since = RemoteList::Since;

// So many files of one name, and "z".
BrowserListing files(std::size_t count) {
    BrowserListing listing;
    listing.entries.assign(count, {.name = "file", .type = BrowserEntryType::file});
    listing.entries.push_back({.name = "z", .type = BrowserEntryType::file});
    return listing;
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
        dropRows(list, row.directory); // as the reply begins, and as it has come
        EXPECT_EQ(entryAt(list, 0), nullptr);
        EXPECT_EQ(emptyReason(list), "The list of the directory is on its way.");
        showListing(list, files(row.others));
        EXPECT_EQ(list.isArranged, row.others < 30000);
        EXPECT_EQ(entryAt(list, 0) != nullptr, list.isArranged);
        arrange(list);
        EXPECT_EQ(list.row, row.row);
        EXPECT_EQ(whyNotUsable(list), "");
    }
}

TEST(RemoteList, SaysWhatCanBeDoneWithWhichRows) {
    RemoteList list;
    dropRows(list, "/pub");
    BrowserListing listing;
    listing.entries = {{.name = ".."}, {.name = "sub"}, {.name = "l -> /t", .type = Type::link}};
    for (const char* const name : {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"}) {
        listing.entries.push_back({.name = name, .type = Type::file});
    }
    showListing(list, std::move(listing));
    using enum BrowserAct;
    struct Row {
        BrowserAct act;
        std::vector<int> rows;
        bool isPossible;
    };
    for (const auto& [act, rows, isPossible] : std::vector<Row>{{remove, {0, 2}, false},
                                                                {remove, {0, 1, 2}, true},
                                                                {permissions, {2}, false},
                                                                {rename, {1}, true},
                                                                {rename, {1, 3}, false},
                                                                {rename, {0}, false},
                                                                {rename, {}, false},
                                                                {hide, {1}, true},
                                                                {hide, {3}, false},
                                                                {nuke, {1}, true},
                                                                {up, {}, true},
                                                                {makeDirectory, {}, true}}) {
        EXPECT_EQ(whyNot(act, list, rows, true).empty(), isPossible) << static_cast<int>(act) << rows.size();
    }
    EXPECT_NE(whyNot(nuke, list, {1}, false), "");
    EXPECT_EQ(pathsOf(list, {0, 1, 2}), "/\n/pub/sub\n/pub/l");
    EXPECT_EQ(pathsOf(list, {}), "/pub");
    EXPECT_EQ(pickedRows(list, {0, 1, 2, 3}).names, "sub/\r\na\r\n\r\nLeft out: 1 link and \"..\"");
    EXPECT_TRUE(
        pickedRows(list, {1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}).names.ends_with("\r\ni\r\n... and 1 more"));
    list.since = RemoteList::Since::movedAway;
    EXPECT_NE(whyNot(remove, list, {1}, true), "");
    EXPECT_EQ(whyNot(copyPath, list, {1}, true), "");
}

} // namespace
} // namespace corvel

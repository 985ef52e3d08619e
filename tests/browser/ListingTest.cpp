#include "browser/Listing.h"

#include "common/Text.h"

#include <gtest/gtest.h>

#include <random>
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

    // Columns padded as ls pads them.
    {"padded numbers", "drwxr-xr-x    2 0        0            4096 Jan 05 12:00 files",
     "0|drwxr-xr-x|0|0|4096|01/05 12:00|files"},
    {"padded day", "-rw-r--r-- 1 u g 1 Jan  5 12:34 f", "2|-rw-r--r--|u|g|1|01/ 5|12:34 f",
     "2|-rw-r--r--|u|g|1|01/5 12:34|f"},
    {"padded year", "-rw-r--r-- 1 u g 1 Nov 15  2019 f", "2|-rw-r--r--|u|g|1|11/15 |2019 f",
     "2|-rw-r--r--|u|g|1|11/15 2019|f"},
    {"links padded on the right shift the owner away", "-rw-r--r-- 1  bob staff 512 Jan 5 12:34 f",
     "2|-rw-r--r--||bob|staff|/Jan 5|12:34 f"},
    {"tabs are no blanks", "-rw-r--r--\t1\tu\tg\t1\tJan\t5\t12:34\tf", ""},

    // One blank in front of every line.
    {"leading blank", " drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 incoming",
     "0|drwxr-xr-x|ftp|ftp|4096|10/10 10:10|incoming"},
    {"two leading blanks", "  drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 incoming", ""},

    // Access texts of ten characters and what some systems put behind them.
    {"character device", "crw-rw-rw- 1 root root 1, 3 Jan 5 12:00 null",
     "0|crw-rw-rw-|root|root|1,|/Jan 5|12:00 null"},

    // Owners, groups and sizes.
    {"size beyond 64 bits", "-rw-r--r-- 1 u g 99999999999999999999999 Jan 5 12:00 big",
     "2|-rw-r--r--|u|g|99999999999999999999999|01/5 12:00|big"},
    {"size in words", "-rw-r--r-- 1 u g 1.5K Jan 5 12:00 f", ""},

    // Names.
    {"blanks inside", "-rw-r--r-- 1 u g 1 Jan 5 12:00 a  b   c", "2|-rw-r--r--|u|g|1|01/5 12:00|a  b   c"},
    {"looks like an entry", "-rw-r--r-- 1 u g 1 Jan 5 12:00 -rw-r--r-- 1 u g 1 Jan 5 12:00 f",
     "2|-rw-r--r--|u|g|1|01/5 12:00|-rw-r--r-- 1 u g 1 Jan 5 12:00 f"},

    // Lines that are no entries, and some that look enough like one.
    {"header that looks like an entry", "211-Status of / a b 5 c d e f", ""},
    {"trailer that looks like an entry", "211 End ab of a b 5 c d e f", ""},
    {"header with a long path", "212-Status of /a b 5 c d e f", "0|212-Status|/a|b|5|/d e|f"},
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

TEST(Listing, AcceptsExactlyWhatThePatternMatches) {
    // Short lines of few characters: some match, some almost.
    constexpr std::string_view alphabet = "    5a-.";
    std::mt19937 random(20); // NOLINT: the same lines in every run
    int accepted = 0;
    for (int round = 0; round < 30000; ++round) {
        std::string line(random() % 3 == 0 ? " " : "");
        line += random() % 20 == 0 ? "211-x-xr-x " : "drwxr-xr-x ";
        const std::size_t length = 21 + random() % 22;
        while (line.size() < length) {
            line += alphabet[random() % alphabet.size()];
        }
        accepted += isEntry(line) ? 1 : 0;
        ASSERT_EQ(parse({line}).isRecognised, isEntry(line)) << '"' << line << '"';
        ASSERT_EQ(parse({line}, true).isRecognised, isEntry(line)) << '"' << line << '"';
    }
    EXPECT_TRUE(accepted > 2500 && accepted < 27500) << accepted;
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
        "-rw-r--r-- 1 u g " + std::string(21, '0') + " Jan 5 12:00 more than 20 digits",
        "-rw-r--r-- 1 u g " + huge + " Jan 5 12:00 huge",
    });
    const std::vector<std::string> cells = {"       5", " 1,234,567",         "     7",
                                            "4k",       std::string(21, '0'), huge};
    for (std::size_t row = 0; row < cells.size(); ++row) {
        EXPECT_EQ(cellText(listing, row, BrowserColumn::size, ","), cells[row]) << listing.entries[row].name;
    }
}

TEST(Listing, NumbersMonthsAndGivesTheNameColumnWhatIsLeft) {
    const std::vector<const char*> months = {"jan", "FEB", "Mar", "aPr", "may", "jun",
                                             "jul", "aug", "sep", "oct", "nov", "dec"};
    for (std::size_t i = 0; i < months.size(); ++i) {
        EXPECT_EQ(MonthNumber(months[i]), (i < 9 ? "0" : "") + std::to_string(i + 1));
    }
    EXPECT_EQ(MonthNumber("janu"), "");
    const std::vector<int> others = {1000, 1000, 500, 500, 600};
    EXPECT_EQ(FitBrowserColumns(6001, others), 2001);
    EXPECT_EQ(FitBrowserColumns(0, others), 2000);
}

} // namespace
} // namespace corvel

#include "browser/Listing.h"

#include "browser/ListingSamples.h"
#include "common/Pattern.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace corvel {
namespace {

constexpr std::string_view longFormat = "?????????? * ?* ?* *# ?* ?* ?* ?*";

BrowserListing parse(const std::vector<std::string>& lines, bool mergeBlanks = false) {
    const std::vector<std::string_view> views(lines.begin(), lines.end());
    return ParseDirectoryListing(views, {.mergeBlanks = mergeBlanks});
}

// The texts of an entry, to compare and to print.
std::string entryText(const BrowserEntry& entry) {
    std::string text = std::to_string(static_cast<int>(entry.type));
    for (const std::string_view field :
         {entry.access, entry.owner, entry.group, entry.size, entry.date, entry.name}) {
        text += '|';
        text += field;
    }
    return text;
}

std::string listingText(const BrowserListing& listing) {
    std::string text;
    for (const BrowserEntry& entry : listing.entries) {
        text += entryText(entry) + '\n';
    }
    return text;
}

// Whether a line is an entry, by the pattern itself; the parser goes over the bytes once instead.
bool isEntry(std::string_view line) {
    const auto matches = [](std::string_view text) {
        return !text.starts_with("211 ") && !text.starts_with("211-") && matchesPattern(text, longFormat);
    };
    return matches(line) || (line.starts_with(' ') && matches(line.substr(1)));
}

// Accepts what the pattern matches, and shows bytes of the line alone, in their order.
void expectByTheRules(const std::string& line, const char* name) {
    for (const bool mergeBlanks : {false, true}) {
        const BrowserListing listing = parse({line}, mergeBlanks);
        ASSERT_EQ(listing.isRecognised, isEntry(line)) << name << ": \"" << line << '"';
        std::size_t from = 0;
        for (const BrowserEntry& entry : listing.entries) {
            for (const std::string_view field : {entry.access, entry.owner, entry.group, entry.size}) {
                from = line.find(field, from);
                ASSERT_NE(from, std::string::npos) << name << ": \"" << line << '"';
                from += field.size();
            }
            EXPECT_TRUE(std::string_view(line).substr(from).ends_with(entry.name))
                << name << ": \"" << line << '"';
        }
    }
}

TEST(Listing, ReadsTheLinesOfManyServers) {
    for (const ListingSample& sample : listingSamples()) {
        const auto shown = [](const char* entry) {
            return *entry == '\0' ? std::string() : entry + std::string("\n");
        };
        EXPECT_EQ(listingText(parse({sample.line})), shown(sample.entry)) << sample.name;
        const char* merged = sample.merged == nullptr ? sample.entry : sample.merged;
        EXPECT_EQ(listingText(parse({sample.line}, true)), shown(merged)) << sample.name << ", merged";
    }
}

TEST(Listing, ReadsAllLinesTogether) {
    std::vector<std::string> lines = {"211-Status of /pub:"};
    std::string expected;
    for (const ListingSample& sample : listingSamples()) {
        lines.push_back(sample.line);
        expected += *sample.entry == '\0' ? std::string() : sample.entry + std::string("\n");
    }
    lines.insert(lines.end(), {"211 End of Status", ""});
    const BrowserListing listing = parse(lines);
    EXPECT_EQ(listingText(listing), expected);
    EXPECT_EQ(listing.fileCount + listing.directoryCount + 1, listing.entries.size()) << "all but \"..\"";
}

TEST(Listing, CutsMangledLinesAsTheRulesSay) {
    for (const ListingSample& sample : listingSamples()) {
        for (std::size_t cut = 0; cut <= sample.line.size(); ++cut) {
            expectByTheRules(sample.line.substr(0, cut), sample.name);
            expectByTheRules(sample.line.substr(cut), sample.name);
            expectByTheRules(sample.line.substr(0, cut) + " " + sample.line.substr(cut), sample.name);
            if (cut < sample.line.size()) {
                expectByTheRules(std::string(sample.line).erase(cut, 1), sample.name);
            }
        }
    }
}

TEST(Listing, AcceptsExactlyWhatThePatternMatches) {
    // Short lines of few characters: some match, some almost.
    constexpr std::string_view alphabet = "    5a-.";
    std::mt19937 random(20); // NOLINT: the same lines in every run
    int accepted = 0;
    for (int round = 0; round < 60000; ++round) {
        std::string line(random() % 3 == 0 ? " " : "");
        line += random() % 20 == 0 ? "211-x" : "drwxr";
        line += "-xr-x ";
        const std::size_t length = 10 + random() % 22;
        while (line.size() < 11 + length) {
            line += alphabet[random() % alphabet.size()];
        }
        accepted += isEntry(line) ? 1 : 0;
        expectByTheRules(line, "random");
    }
    EXPECT_GT(accepted, 5000);
    EXPECT_LT(accepted, 55000);
}

TEST(Listing, CountsEntriesByWhatTheyAre) {
    const BrowserListing listing = parse({
        "drwxr-xr-x 9 u g 123456789 Jan 5 12:00 .",
        "drwxr-xr-x 9 u g 1 Jan 5 12:00 ..",
        "drwxr-xr-x 9 u g 1 Jan 5 12:00 ...",
        "brw-rw---- 1 u g 8, 0 Jan 5 12:00 sda",
        "lrwxrwxrwx 1 u g 1 Jan 5 12:00 a -> b",
        "-rw-r--r-- 1 u g 1 Jan 5 12:00 f",
    });
    EXPECT_EQ(listing.entries.size(), 5U);
    EXPECT_EQ(listing.directoryCount, 2U);
    EXPECT_EQ(listing.fileCount, 2U);
    EXPECT_EQ(listing.longestSize, 9U) << "the size of \".\" counts for the padding";
    std::string keys;
    for (const BrowserEntry& entry : listing.entries) {
        keys += std::to_string(typeKey(entry)) + std::to_string(imageIndex(entry)) + " ";
    }
    EXPECT_EQ(keys, "01 11 11 22 33 ");
}

TEST(Listing, CountsBeyondSixteenBits) {
    const std::vector<std::string> lines(70000, "-rw-r--r-- 1 u g 1 Jan 5 12:00 f");
    EXPECT_EQ(parse(lines).fileCount, 70000U);
}

TEST(Listing, KnowsWhetherAnyLineWasAnEntry) {
    struct Case {
        const char* name;
        std::vector<std::string> lines;
        bool isRecognised;
    };
    const std::vector<Case> cases = {
        {"no lines", {}, false},
        {"header that looks like an entry", {"211-Status of / a b 5 c d e f", ""}, false},
        {"trailer that looks like an entry", {"211 End ab of a b 5 c d e f", ""}, false},
        {"only the directory itself", {"drwxr-xr-x 2 u g 4096 Jan 5 12:00 ."}, true},
    };
    for (const Case& row : cases) {
        const BrowserListing listing = parse(row.lines);
        EXPECT_EQ(listing.isRecognised, row.isRecognised) << row.name;
        EXPECT_TRUE(listing.entries.empty()) << row.name;
        EXPECT_EQ(listing.fileCount + listing.directoryCount, 0U) << row.name;
    }
}

TEST(Listing, OwnsItsTextAcrossMoves) {
    BrowserListing moved;
    {
        std::vector<std::string> lines = {"-rw-r--r-- 1 u g 1 Jan 5 12:00 a name that is long enough"};
        BrowserListing listing = parse(lines);
        lines.front().assign(lines.front().size(), '#');
        moved = std::move(listing);
    }
    EXPECT_EQ(entryText(moved.entries.front()), "2|-rw-r--r--|u|g|1|01/5 12:00|a name that is long enough");
}

TEST(Listing, PadsSizesSoThatTheyLineUp) {
    const BrowserListing listing = parse({
        "-rw-r--r-- 1 u g 5 Jan 5 12:00 short",
        "-rw-r--r-- 1 u g 1234567 Jan 5 12:00 longest",
        "-rw-r--r-- 1 u g 007 Jan 5 12:00 zeros",
        "-rw-r--r-- 1 u g 4k 8 Jan 5 12:00 no number",
    });
    const std::vector<const char*> cells = {"       5", " 1,234,567", "     7", "      4k"};
    for (std::size_t row = 0; row < cells.size(); ++row) {
        EXPECT_EQ(cellText(listing, row, BrowserColumn::size, ","), cells[row]) << listing.entries[row].name;
    }
}

TEST(Listing, NumbersMonths) {
    const std::vector<const char*> months = {"jan", "FEB", "Mar", "aPr", "may", "jun",
                                             "jul", "aug", "sep", "oct", "nov", "dec"};
    for (std::size_t i = 0; i < months.size(); ++i) {
        EXPECT_EQ(MonthNumber(months[i]), (i < 9 ? "0" : "") + std::to_string(i + 1));
    }
    for (const char* other : {"", "anf", "janu", "ja"}) {
        EXPECT_EQ(MonthNumber(other), "") << other;
    }
}

} // namespace
} // namespace corvel

#include "browser/Listing.h"

#include "browser/ListingSamples.h"
#include "common/Pattern.h"

#include <gtest/gtest.h>

#include <array>
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

// A second reading of the same rules, slow and on plain copies, to hold the parser against.
struct Reference {
    static bool accepts(const std::string& line) {
        return !line.starts_with("211 ") && !line.starts_with("211-") && matchesPattern(line, longFormat);
    }

    static std::string take(std::string& rest) {
        const std::size_t blank = rest.find(' ');
        std::string field = rest.substr(0, blank);
        rest = blank == std::string::npos ? "" : rest.substr(blank + 1);
        return field;
    }

    static void dropBlanks(std::string& rest) {
        while (!rest.empty() && rest[0] == ' ') {
            rest.erase(0, 1);
        }
    }

    static std::string month(std::string name) {
        constexpr std::string_view all = "janfebmaraprmayjunjulaugsepoctnovdec";
        for (char& letter : name) {
            letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
        }
        const std::size_t place = name.size() == 3 ? all.find(name) : std::string::npos;
        if (place == std::string::npos || place % 3 != 0) {
            return "";
        }
        std::string number = place < 27 ? "0" : "";
        return number += std::to_string(place / 3 + 1);
    }

    // The entry's text as entryText gives it, or nothing for a line that is not shown.
    static std::string read(std::string line, bool mergeBlanks) {
        if (!accepts(line)) {
            if (!line.starts_with(' ') || !accepts(line.substr(1))) {
                return "";
            }
            line.erase(0, 1);
        }
        const std::string access = line.substr(0, 10);
        std::string rest = line.substr(10);
        dropBlanks(rest);
        take(rest);
        std::array<std::string, 3> fields;
        for (std::string& field : fields) {
            field = take(rest);
            dropBlanks(rest);
        }
        std::string date = month(take(rest)) + "/";
        if (mergeBlanks) {
            dropBlanks(rest);
        }
        date += take(rest) + " ";
        if (mergeBlanks) {
            dropBlanks(rest);
        }
        date += take(rest);
        if (rest == ".") {
            return "";
        }
        const char* type = access[0] == 'l' ? "1" : access[0] == '-' ? "2" : "0";
        return std::string(type) + "|" + access + "|" + fields[0] + "|" + fields[1] + "|" + fields[2] + "|" +
               date + "|" + rest + "\n";
    }
};

void expectLikeReference(const std::string& line, const char* name) {
    for (const bool mergeBlanks : {false, true}) {
        EXPECT_EQ(listingText(parse({line}, mergeBlanks)), Reference::read(line, mergeBlanks))
            << name << ": \"" << line << '"';
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
            expectLikeReference(sample.line.substr(0, cut), sample.name);
            expectLikeReference(sample.line.substr(cut), sample.name);
            expectLikeReference(sample.line.substr(0, cut) + " " + sample.line.substr(cut), sample.name);
            if (cut < sample.line.size()) {
                expectLikeReference(std::string(sample.line).erase(cut, 1), sample.name);
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
        accepted += Reference::read(line, false).empty() ? 0 : 1;
        expectLikeReference(line, "random");
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
        {"an empty directory", {"211-status of /x:", "211 End of Status", ""}, false},
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
    struct Case {
        const char* name;
        std::string size;
        const char* cell;
    };
    const BrowserListing listing = parse({
        "-rw-r--r-- 1 u g 5 Jan 5 12:00 short",
        "-rw-r--r-- 1 u g 1234567 Jan 5 12:00 longest",
        "-rw-r--r-- 1 u g 007 Jan 5 12:00 zeros",
        "-rw-r--r-- 1 u g 4k 8 Jan 5 12:00 no number",
    });
    const std::vector<Case> cases = {
        {"short", "5", "       5"},
        {"longest", "1234567", " 1,234,567"},
        {"padding counts the zeros that are not shown", "007", "     7"},
        {"no number", "4k", "      4k"},
    };
    for (std::size_t row = 0; row < cases.size(); ++row) {
        EXPECT_EQ(listing.entries[row].size, cases[row].size) << cases[row].name;
        EXPECT_EQ(cellText(listing, row, BrowserColumn::size, ","), cases[row].cell) << cases[row].name;
    }
}

TEST(Listing, NumbersMonths) {
    struct Case {
        const char* month;
        const char* number;
    };
    constexpr std::array<Case, 16> cases = {{{"jan", "01"},
                                             {"FEB", "02"},
                                             {"Mar", "03"},
                                             {"aPr", "04"},
                                             {"may", "05"},
                                             {"jun", "06"},
                                             {"jul", "07"},
                                             {"aug", "08"},
                                             {"sep", "09"},
                                             {"oct", "10"},
                                             {"nov", "11"},
                                             {"dec", "12"},
                                             {"", ""},
                                             {"anf", ""},
                                             {"janu", ""},
                                             {"ja", ""}}};
    for (const Case& row : cases) {
        EXPECT_EQ(MonthNumber(row.month), row.number) << row.month;
    }
}

} // namespace
} // namespace corvel

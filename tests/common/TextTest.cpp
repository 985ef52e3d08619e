#include "common/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using Pieces = std::vector<std::string_view>;

TEST(Text, IsSplitAndJoined) {
    struct Row {
        const char* name;
        std::string_view text;
        std::string_view separator;
        std::size_t most;
        Pieces pieces;
    };
    constexpr std::size_t all = std::string_view::npos;
    const std::vector<Row> rows = {
        {"nothing", "", ",", all, {""}},
        {"empty pieces", ",a,,", ",", all, {"", "a", "", ""}},
        {"at most two", "a=b=c", "=", 2, {"a", "b=c"}},
        {"at most one", "a=b", "=", 1, {"a=b"}},
        {"long separator", "a | b |c", fieldSeparator, all, {"a", "b |c"}},
        {"overlapping separators", "a | | b", fieldSeparator, all, {"a", "| b"}},
        {"line ends", "a\r\nb\nc\r\n", lineEnd, all, {"a", "b\nc", ""}},
    };
    for (const Row& row : rows) {
        const Pieces pieces = split(row.text, row.separator, row.most);
        EXPECT_EQ(pieces, row.pieces) << row.name;
        EXPECT_EQ(join(pieces, row.separator), row.text) << row.name;
    }
}

TEST(Text, FieldsAreCutWhereSplitCuts) {
    const std::vector<std::string> texts = {
        "",         " | ",         "a | b",     " |  | ",   " | | ",         "a| | b",
        "a |b | c", " | |  |  | ", "a | b|",    "a |  | b", "x | y | z | w", "|||  | ||",
        "a | b | ", " || | | ",    "| a | b |",
    };
    for (const std::string& text : texts) {
        const std::vector<std::string_view> pieces = split(text, fieldSeparator);
        for (std::size_t count = 1; count <= 5; ++count) {
            std::vector<std::string_view> fields(count);
            ASSERT_EQ(cutFields(text, fields), pieces.size() == count) << '"' << text << "\" into " << count;
            if (pieces.size() == count) {
                EXPECT_EQ(fields, pieces) << '"' << text << '"';
            }
            ASSERT_EQ(cutLeadingFields(text, fields), pieces.size() >= count) << '"' << text << '"';
            if (pieces.size() >= count) {
                EXPECT_EQ(fields, split(text, fieldSeparator, count)) << '"' << text << '"';
            }
        }
    }
}

TEST(Text, IsReplaced) {
    EXPECT_EQ(replaceAll("aaa", "a", "aa"), "aaaaaa"); // the replacement is not searched again
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("a b ", " ", ""), "ab");
}

TEST(Text, IsTrimmedOfBlanksAlone) {
    const std::vector<std::pair<std::string_view, std::string_view>> rows = {
        {"", ""}, {"   ", ""}, {" a b ", "a b"}, {"\ta\t", "\ta\t"}, {" \r\n ", "\r\n"},
    };
    for (const auto& [text, trimmed] : rows) {
        EXPECT_EQ(trim(text), trimmed);
    }
    EXPECT_EQ(trimLeading("  a "), "a ");
}

TEST(Text, CaseOfLetters) {
    EXPECT_EQ(toLower("AZ[@\xC4"), "az[@\xC4"); // nothing but A to Z, whatever the encoding
    EXPECT_EQ(toUpper("az{`\xE4"), "AZ{`\xE4");
    const std::vector<std::pair<std::string, std::string>> sameText = {
        {"Abc", "aBC"},
        {"\u00C4\u00D6\u00DE", "\u00E4\u00F6\u00FE"},             // Latin-1
        {"\u0100\u0139\u014A\u0179", "\u0101\u013A\u014B\u017A"}, // Latin Extended-A
        {"\u0391\u03A9", "\u03B1\u03C9"},                         // Greek
        {"\u0410\u042F\u0401\u0460", "\u0430\u044F\u0451\u0461"}, // Cyrillic
        {"\u0178", "\u00FF"},
    };
    for (const auto& [upper, lower] : sameText) {
        EXPECT_EQ(foldCase(upper), foldCase(lower)) << upper;
    }
    for (const char* other : {"\u00D7", "\u00F7", "\u0130", "\u20AC", "\xC3", "\xFF\xC3(", "\U0001F600"}) {
        EXPECT_EQ(foldCase(other), other);
    }
    EXPECT_NE(foldCase("\u00D7"), foldCase("\u00F7")); // the signs for times and divided by are no letters
}

TEST(Text, OneLine) {
    EXPECT_TRUE(isOneLine(""));
    EXPECT_TRUE(isOneLine("a\tb\x1B"));
    for (const std::string& text : {std::string("a\r"), std::string("\nb"), std::string("a\0b", 3)}) {
        EXPECT_FALSE(isOneLine(text));
    }
}

struct PatternCase {
    const char* name;
    std::string text;
    const char* pattern;
    bool matches;
};

TEST(Pattern, MatchesTheWholeText) {
    const std::vector<PatternCase> cases = {
        {"literal", "abc", "abc", true},
        {"literal is not a prefix", "abcd", "abc", false},
        {"case counts", "Abc", "abc", false},
        {"question mark is exactly one", "ac", "a?c", false},
        {"question mark is a character, not a byte", "/größe", "/gr??e", true},
        {"and no two", "/größe", "/gr????e", false},
        {"hash is no letter", "abc", "a#c", false},
        {"star goes back", "a1b2b", "a*b", true},
        {"star spans line ends", "220-x\r\n220 y\r\n", "*\r\n### *\r\n", true},
        {"empty pattern", "a", "", false},
        {"star alone matches nothing", "", "*", true},
        {"text ends inside pattern", "ab", "ab?", false},
        {"many stars stay quick", std::string(5000, 'a'), "*a*a*a*a*a*a*b", false},
    };
    for (const PatternCase& row : cases) {
        EXPECT_EQ(matchesPattern(row.text, row.pattern), row.matches) << row.name;
    }
}

} // namespace
} // namespace corvel

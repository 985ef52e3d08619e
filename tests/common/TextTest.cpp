#include "common/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Text, IsSplitAndJoined) {
    struct Row {
        std::string_view text;
        std::string_view separator;
        std::size_t most;
        std::vector<std::string_view> pieces;
    };
    constexpr std::size_t all = std::string_view::npos;
    const std::vector<Row> rows = {
        {"", ",", all, {""}},
        {",a,,", ",", all, {"", "a", "", ""}},
        {"a=b=c", "=", 2, {"a", "b=c"}},
        {"a | | b", fieldSeparator, all, {"a", "| b"}},
        {"a\r\nb\nc\r\n", lineEnd, all, {"a", "b\nc", ""}},
    };
    for (const Row& row : rows) {
        const std::vector<std::string_view> pieces = split(row.text, row.separator, row.most);
        EXPECT_EQ(pieces, row.pieces) << row.text;
        EXPECT_EQ(join(pieces, row.separator), row.text);
    }
    EXPECT_EQ(replaceAll("aaa", "a", "aa"), "aaaaaa"); // the replacement is not searched again
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
}

TEST(Text, FieldsAreCutWhereSplitCuts) {
    for (const std::string_view text : {"", " | ", "a | b", " |  | ", " | | ", "a| | b", " | |  |  | ",
                                        "a | b|", "x | y | z | w", "|||  | ||", " || | | "}) {
        const std::vector<std::string_view> pieces = split(text, fieldSeparator);
        for (std::size_t count = 1; count <= 5; ++count) {
            std::vector<std::string_view> fields(count);
            ASSERT_EQ(cutFields(text, fields), pieces.size() == count) << '"' << text << "\" into " << count;
            ASSERT_EQ(cutLeadingFields(text, fields), pieces.size() >= count) << '"' << text << '"';
            if (pieces.size() >= count) {
                EXPECT_EQ(fields, split(text, fieldSeparator, count)) << '"' << text << '"';
            }
        }
    }
}

TEST(Text, IsTrimmedOfBlanksAlone) {
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trim(" a b "), "a b");
    EXPECT_EQ(trim("\ta\t"), "\ta\t");
}

TEST(Text, CaseOfLetters) {
    EXPECT_EQ(toLower("AZ[@\xC4"), "az[@\xC4"); // nothing but A to Z, whatever the encoding
    EXPECT_EQ(toUpper("az{`\xE4"), "AZ{`\xE4");
    const std::vector<std::pair<std::string, std::string>> sameText = {
        {"AbcÄÖÞ", "aBCäöþ"}, {"ĀĹŊŹ", "āĺŋź"}, {"ΑΩ", "αω"}, {"АЯЁѠ", "аяёѡ"}, {"Ÿ", "ÿ"},
    };
    for (const auto& [upper, lower] : sameText) {
        EXPECT_EQ(foldCase(upper), foldCase(lower)) << upper;
    }
    for (const char* other : {"×", "÷", "İ", "€", "\xC3", "\xFF\xC3(", "\U0001F600"}) {
        EXPECT_EQ(foldCase(other), other);
    }
}

TEST(Text, OneLine) {
    EXPECT_TRUE(isOneLine("a\tb\x1B"));
    for (const std::string& text : {std::string("a\r"), std::string("\nb"), std::string("a\0b", 3)}) {
        EXPECT_FALSE(isOneLine(text));
    }
}

TEST(Text, MatchesAPatternAsAWhole) {
    struct Row {
        std::string text;
        const char* pattern;
        bool matches;
    };
    const std::vector<Row> rows = {
        {"abc", "abc", true},
        {"abcd", "abc", false},
        {"Abc", "abc", false},
        {"ac", "a?c", false},
        {"/größe", "/gr??e", true}, // a character is not a byte
        {"/größe", "/gr????e", false},
        {"abc", "a#c", false},
        {"a1b2b", "a*b", true},
        {"220-x\r\n220 y\r\n", "*\r\n### *\r\n", true},
        {"a", "", false},
        {"", "*", true},
        {"ab", "ab?", false},
        {std::string(5000, 'a'), "*a*a*a*a*a*a*b", false}, // and soon
    };
    for (const Row& row : rows) {
        EXPECT_EQ(matchesPattern(row.text, row.pattern), row.matches) << row.pattern;
    }
}

} // namespace
} // namespace corvel

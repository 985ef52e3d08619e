#include "common/Errors.h"
#include "common/ShownText.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Text, KeepsItsEmptyPieces) {
    EXPECT_EQ(split(",a,,", ","), (std::vector<std::string_view>{"", "a", "", ""}));
}

TEST(Text, IsWipedWithWhatItHeldBefore) {
    for (const std::size_t length : {5, 500}) { // within the object, and behind it
        std::string text(length, 's');
        text = "short";
        wipe(text);
        EXPECT_TRUE(text.empty());
        EXPECT_EQ(std::string(text.data(), length), std::string(length, '\0'));
    }
}

TEST(Text, CaseOfLetters) {
    EXPECT_EQ(toLower("AZ[@\xC4"), "az[@\xC4"); // nothing but A to Z, whatever the encoding
    const std::vector<std::pair<std::string, std::string>> sameText = {
        {"AbcÄÖÞ", "aBCäöþ"}, {"ĀĹŊŹ", "āĺŋź"}, {"ΑΩ", "αω"}, {"АЯЁѠ", "аяёѡ"}, {"Ÿ", "ÿ"},
    };
    for (const auto& [upper, lower] : sameText) {
        EXPECT_EQ(foldCase(upper), foldCase(lower)) << upper;
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
        {"/größe", "/gr??e", true}, // a character is not a byte
        {"abc", "a#c", false},
        {"a1b2b", "a*b", true},
        {"220-x\r\n220 y\r\n", "*\r\n### *\r\n", true},
        {"", "*", true},
        {std::string(5000, 'a'), "*a*a*a*a*a*a*b", false}, // and soon
    };
    for (const Row& row : rows) {
        EXPECT_EQ(matchesPattern(row.text, row.pattern), row.matches) << row.pattern;
    }
}

TEST(ShownText, IsShortButTheEndsOfLongTextsStay) {
    const std::string euro = "\xE2\x82\xAC";
    EXPECT_EQ(shortened("äöü", 3), "äöü");
    EXPECT_EQ(shortened("aaaabbbb" + euro + euro, 9), "aaaabb ... (1 character) ... b" + euro + euro);
    EXPECT_EQ(shortened("a" + std::string(12344, 'x') + euro, 3), "ax ... (12,343 characters) ... " + euro);
    EXPECT_EQ(moreMark(59000), " ... (59,000 more characters)");
    const std::string long1 = "a" + std::string(60000, '\x7F') + "1";
    const std::string long2 = "a" + std::string(60000, '\x7F') + "2";
    EXPECT_NE(shownName(long1), shownName(long2));
    EXPECT_LT(characterCount(shownName(std::string(60000, '\xFF'))), longestName + 40);
    EXPECT_LT(characterCount(shownName(long1 + std::string(60000, '\x81'))), longestName + 80);

    const std::vector<std::pair<std::string, std::string>> rows = {
        {"ab cd\nef", "ab cd\nef"},         {"abcdef gh", "abcdef\ngh"}, {"abc defg", "abc\ndefg"},
        {"abcdefgh", "abcdef\ngh"},         {" abcdefg", " abcde\nfg"},  {"äöüäöüäö", "äöüäöü\näö"},
        {"abcdef\nabc\n", "abcdef\nabc\n"},
    };
    for (const auto& [text, lines] : rows) {
        EXPECT_EQ(wrapped(text, 6), lines) << text;
    }
}

TEST(Template, ReplacesPlaceholders) {
    const MenuVariables variables = {
        {"name", "file.txt"}, {"User", "administrator"}, {"credits", "2048000"},
        {"half", "1536"},     {"odd", "2560"},           {"nested", "%(name)"},
        {"empty", ""},        {"umlaut", "äöü"},         {"latin", "\xE4\xF6\xFC"},
        {"name", "second"},   {"hostile", "`x`; y)"},    {"huge", std::string(400, '9')},
    };
    const std::vector<std::pair<const char*, std::string>> rows = {
        {"%(name)%(empty)%(NAME)!", "file.txtfile.txt!"},
        {"[%(unknown)%(unknown,5)]", "[     ]"},
        {"%(nested) %(name)", "%(name) file.txt"},
        {"%(%(name)", ""},
        {"site %(hostile)", "site `x`; y)"},
        {"%(user,3,L,,1,x,9)", "adm"},
        {"%(name) %() %(name)", "file.txt %() %(name)"},
        {"[%(name,10,R)]", "[  file.txt]"},
        {"[%(name,10,L,.-)]", "[file.txt..]"},
        {"[%(user,-3,L,,1)%(name,-3)]", "[file.txt]"},
        {"[%(umlaut,4,R)%(umlaut,2,L,,1)]", "[ äöüäö]"},
        {"[%(latin,4,R)%(latin,2,L,,1)]", "[ \xE4\xF6\xFC\xE4\xF6]"},
        {"%(credits,8,R,$)", "    2000"},
        {"%(half,0,L,$) %(odd,0,L,$)", "2 2"},
        {"%(empty,99999999999999999999,L,x)", std::string(4096, 'x')},
    };
    for (const auto& [text, expanded] : rows) {
        EXPECT_EQ(ExpandTemplate(text, variables), expanded) << text;
    }
    EXPECT_LT(ExpandTemplate("%(huge,0,L,$)", variables).size(), 400U);
    EXPECT_EQ(ExpandTemplate("Quit %(name)", {}), "Quit %(name)") << "no variables, no expansion";
}

TEST(TextEncoding, KnowsWellFormedUtf8) {
    // The first and the last of each length; then what is too long or beyond the last, and pieces.
    const std::vector<std::string> good = {"", "\xC2\x80\xDF\xBF", "\xE0\xA0\x80\xEF\xBF\xBF",
                                           "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"};
    const std::vector<std::string> bad = {"\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC0\x80",  "\xE0\x9F\xBF",
                                          "\x80",         "\xE2\x82",         "\xE2\x82z", "\xC3\xC3\xA9"};
    for (const std::string& bytes : good) {
        EXPECT_TRUE(isValidUtf8(bytes)) << bytes;
    }
    for (const std::string& bytes : bad) {
        EXPECT_FALSE(isValidUtf8(bytes)) << bytes;
        EXPECT_FALSE(isValidUtf8("abc" + bytes + "abc")) << bytes;
    }
}

TEST(TextEncoding, EveryByteOfWindows1252GoesThereAndBack) {
    for (int value = 0; value < 256; ++value) {
        const std::string byte(1, static_cast<char>(value));
        const std::string text = toUtf8(byte);
        EXPECT_EQ(characterCount(text), 1U) << value;
        EXPECT_EQ(fromUtf8(text, TextEncoding::windows1252), byte) << value;
    }
    EXPECT_EQ(characterCount("a\u00E9\u20AC\U0001F600"), 4U);
    EXPECT_EQ(toUtf8("\x80\x9F\xA0\xFF"), "\u20AC\u0178\u00A0\u00FF");
    for (const char* text : {"\u0416", "a\u0100", "\U0001F600", "\u0080", "\u009F", "\xC3"}) {
        EXPECT_EQ(fromUtf8(text, TextEncoding::windows1252), text) << "it has no place there";
    }
}

TEST(SeenTexts, JudgeEveryWordHoweverItIsCut) {
    constexpr TextEncoding utf8 = TextEncoding::utf8;
    constexpr TextEncoding latin = TextEncoding::windows1252;
    const std::vector<std::pair<std::string, TextEncoding>> rows = {
        {"abc def\r\n", utf8},          {"gr\xFC\xDF e\r\n", latin},
        {"gr\u00FC\u00DF e\r\n", utf8}, {"gr\xFC\xDF\r\nzw\u00F6lf\r\n", utf8},
        {"not yet gr\xC3", utf8},
    };
    for (const auto& [bytes, encoding] : rows) {
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
            SeenTexts seen;
            seen.read(bytes.substr(0, cut));
            seen.read(bytes.substr(cut));
            EXPECT_EQ(seen.encoding(), encoding) << bytes << " cut at " << cut;
        }
    }
}

// A reply of which the last bytes are shown reads the same there, wherever they begin.
TEST(TextEncoding, CutsNoCharacter) {
    const std::string euros = "a€€";
    EXPECT_EQ(beginningOf(euros, 3), "a");
    EXPECT_EQ(beginningOf(euros, 4), "a€");
    EXPECT_EQ(beginningOf(euros, 9), euros);
    EXPECT_EQ(beginningOf("\x80\x81\x82\x83\x84\x85", 5).size(), 2U) << "which is no UTF-8";
    EXPECT_TRUE(isValidUtf8(ConversionError(std::string(79, 'x') + euros, "number").what()));
}

TEST(TextEncoding, ReadsTheEndOfALineAsTheWholeLine) {
    const std::string lines = "\xC3\xA9 x\r\n\xC3\xA9\xC3\xA9\r\n\xE9 \xC3\xA9\r\n\xE9";
    const std::vector<std::pair<std::size_t, std::string>> rows = {
        {19, lines},           {18, lines.substr(2)}, // without the rest of a character
        {14, lines.substr(5)}, {13, lines.substr(6)},
        {12, lines.substr(8)}, {4, "\xC2\xA9\r\n\xE9"}, // a line that is not UTF-8
        {3, lines.substr(16)}, {0, ""},
    };
    for (const auto& [size, text] : rows) {
        EXPECT_EQ(endOfLines(lines, size), text) << size;
    }
}

TEST(TextEncoding, MakesControlCharactersVisible) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {std::string("\0\t\r\n\x1B\x7F", 6), "\u2400\u2409\u240D\u240A\u241B\u2421"},
        {"\u009B2J", "<U+9b>2J"},
        {"a\u202Eb\u2066c\u200D\uFEFF", "a<U+202e>b<U+2066>c<U+200d><U+feff>"},
        {"\U000E0041", "<U+e0041>"},
        {"\u00AD\u115F\u2800\u3164\U0001D173\U0002FFFE", "<U+ad><U+115f><U+2800><U+3164><U+1d173><U+2fffe>"},
        {"\u2801\uFFFD", "\u2801\uFFFD"},
    };
    for (const auto& [text, visible] : rows) {
        EXPECT_EQ(visibleText(text), visible);
        EXPECT_TRUE(isValidUtf8(visible));
    }
}

} // namespace
} // namespace corvel

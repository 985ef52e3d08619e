#include "common/TextEncoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

// Each row is tried alone and behind 0 to 16 ASCII bytes: the check goes eight bytes at a time.
TEST(TextEncoding, KnowsWellFormedUtf8) {
    struct Row {
        const char* name;
        std::string bytes;
        bool isValid;
    };
    const std::vector<Row> rows = {
        {"empty", "", true},
        {"last of one byte", "\x7F", true},
        {"first and last of two bytes", "\xC2\x80\xDF\xBF", true},
        {"first and last of three bytes", "\xE0\xA0\x80\xEF\xBF\xBF", true},
        {"first and last of four bytes", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", true},
        {"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", true},
        {"first surrogate", "\xED\xA0\x80", false},
        {"beyond the last character", "\xF4\x90\x80\x80", false},
        {"five-byte lead", "\xF8\x88\x80\x80\x80", false},
        {"NUL in two bytes", "\xC0\x80", false},
        {"three bytes where two do", "\xE0\x9F\xBF", false},
        {"four bytes where three do", "\xF0\x8F\xBF\xBF", false},
        {"trail without lead", "\x80", false},
        {"lead without trail", "\xC3", false},
        {"cut in the middle", "\xE2\x82", false},
        {"letter in the place of a trail", "\xE2\x82z", false},
        {"lead in the place of a trail", "\xC3\xC3\xA9", false},
    };
    for (const Row& row : rows) {
        for (std::size_t before = 0; before <= 16; ++before) {
            const std::string bytes = std::string(before, 'a') + row.bytes;
            EXPECT_EQ(isValidUtf8(bytes), row.isValid) << row.name << " behind " << before;
            EXPECT_EQ(isValidUtf8(bytes + "abcdefgh"), row.isValid)
                << row.name << " inside, behind " << before;
        }
    }
}

TEST(TextEncoding, EveryByteOfWindows1252GoesThereAndBack) {
    for (int value = 0; value < 256; ++value) {
        const std::string byte(1, static_cast<char>(value));
        const std::string text = toUtf8(byte, TextEncoding::windows1252);
        EXPECT_TRUE(isValidUtf8(text)) << value;
        EXPECT_EQ(characterCount(text), 1U) << value;
        EXPECT_EQ(fromUtf8(text, TextEncoding::windows1252), byte) << value;
    }
    EXPECT_EQ(characterCount("a\u00E9\u20AC\U0001F600"), 4U);
    EXPECT_EQ(toUtf8("\x80\x9F\xA0\xFF", TextEncoding::windows1252), "\u20AC\u0178\u00A0\u00FF");
    EXPECT_EQ(toUtf8("gr\xFC\xDF"), toUtf8("gr\u00FC\u00DF"));
    for (const char* text : {"\u0416", "a\u0100", "\U0001F600", "\u0080", "\u009F", "\xC3"}) {
        EXPECT_EQ(fromUtf8(text, TextEncoding::windows1252), text) << "it has no place there";
    }
}

TEST(SeenTexts, JudgeEveryWordHoweverItIsCut) {
    constexpr TextEncoding utf8 = TextEncoding::utf8;
    constexpr TextEncoding latin = TextEncoding::windows1252;
    const std::vector<std::pair<std::string, TextEncoding>> rows = {
        {"abc def\r\n", utf8},
        {"gr\xFC\xDF e\r\n", latin},
        {"gr\u00FC\u00DF e\r\n", utf8},
        {"gr\xFC\xDF\r\nzw\u00F6lf\r\n", utf8},
        {"zw\u00F6lf gr\xFC\xDF\r\n", utf8},
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

TEST(TextEncoding, MakesControlCharactersVisible) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"plain text \u00E9\u20AC\U0001F600", "plain text \u00E9\u20AC\U0001F600"},
        {"e\u0301 and a\u00A0b", "e\u0301 and a\u00A0b"},
        {std::string("\0\t\r\n\x1B\x7F", 6), "\u2400\u2409\u240D\u240A\u241B\u2421"},
        {"\u009B2J", "<U+9b>2J"},
        {"a\u202Eb\u2066c\u200D\uFEFF", "a<U+202e>b<U+2066>c<U+200d><U+feff>"},
        {"\u2028\u2029\u061C", "<U+2028><U+2029><U+61c>"},
        {"\U000E0041", "<U+e0041>"},
        {"\U0010FFFF", "<U+10ffff>"},
    };
    for (const auto& [text, visible] : rows) {
        EXPECT_EQ(visibleText(text), visible);
        EXPECT_TRUE(isValidUtf8(visible));
    }
}

} // namespace
} // namespace corvel

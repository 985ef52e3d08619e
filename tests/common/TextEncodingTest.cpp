#include "common/TextEncoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(TextEncoding, KnowsWellFormedUtf8) {
    // The first and the last of each length; then surrogates, what is too long or beyond the last, and
    // pieces.
    const std::vector<std::string> good = {"",
                                           "\x7F",
                                           "\xC2\x80\xDF\xBF",
                                           "\xE0\xA0\x80\xEF\xBF\xBF",
                                           "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
                                           "\xED\x9F\xBF\xEE\x80\x80"};
    const std::vector<std::string> bad = {"\xED\xA0\x80",
                                          "\xF4\x90\x80\x80",
                                          "\xF8\x88\x80\x80\x80",
                                          "\xC0\x80",
                                          "\xE0\x9F\xBF",
                                          "\xF0\x8F\xBF\xBF",
                                          "\x80",
                                          "\xC3",
                                          "\xE2\x82",
                                          "\xE2\x82z",
                                          "\xC3\xC3\xA9"};
    for (const std::string& bytes : good) {
        EXPECT_TRUE(isValidUtf8(bytes + "abc")) << bytes;
    }
    for (const std::string& bytes : bad) {
        EXPECT_FALSE(isValidUtf8(bytes)) << bytes;
        EXPECT_FALSE(isValidUtf8("abc" + bytes + "abc")) << bytes;
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

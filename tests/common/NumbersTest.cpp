#include "common/Numbers.h"

#include "common/Errors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace corvel {
namespace {

struct NumberCase {
    const char* name;
    std::string text;
    double number;
    bool isLeading; // text begins with a number
    bool isWhole;   // and is nothing else
};

TEST(Numbers, AreReadFromTheStartOfAText) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::vector<NumberCase> cases = {
        {"nothing", "", 0, false, false},
        {"blanks", "  ", 0, false, false},
        {"letters", "abc", 0, false, false},
        {"digits", "21", 21, true, true},
        {"digits, then letters", "21abc", 21, true, false},
        {"blanks around", "  21 ", 21, true, true},
        {"a tab is no blank", "\t21", 0, false, false},
        {"minus", "-9.7", -9.7, true, true},
        {"plus", "+5", 5, true, true},
        {"plus behind blanks", " +5 ", 5, true, true},
        {"signs alone", "+-", 0, false, false},
        {"two signs", "+-5", 0, false, false},
        {"sign, blank, digits", "- 5", 0, false, false},
        {"no digit in front of the point", ".5", 0.5, true, true},
        {"no digit behind the point", "5.", 5, true, true},
        {"a point alone", ".", 0, false, false},
        {"two points", "1.2.3", 1.2, true, false},
        {"no exponent", "1e5", 1, true, false},
        {"no decimal comma", "1,5", 1, true, false},
        {"no words for numbers", "inf", 0, false, false},
        {"no hexadecimal", "0x10", 0, true, false},
        {"too large", std::string(400, '9'), infinity, true, true},
        {"too large, negative", "-" + std::string(400, '9'), -infinity, true, true},
        {"too small", "0." + std::string(400, '0') + "1", 0, true, true},
        {"too small, negative", "-." + std::string(400, '0') + "1", 0, true, true},
        {"NUL ends it", std::string("2\0001", 3), 2, true, false},
    };
    for (const NumberCase& row : cases) {
        EXPECT_EQ(leadingNumber(row.text), row.number) << row.name;
        EXPECT_EQ(hasLeadingNumber(row.text), row.isLeading) << row.name;
        EXPECT_EQ(isNumber(row.text), row.isWhole) << row.name;
        if (row.isWhole) {
            EXPECT_EQ(toNumber(row.text), row.number) << row.name;
        } else {
            EXPECT_THROW(toNumber(row.text), ConversionError) << row.name;
        }
    }
}

TEST(Numbers, HalvesAreRoundedToEven) {
    const std::vector<std::pair<double, double>> rows = {
        {0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {-2.5, -2}, {2.4999, 2}, {-2.6, -3}, {7, 7},
    };
    for (const auto& [number, rounded] : rows) {
        EXPECT_EQ(roundHalfToEven(number), rounded) << number;
    }
}

TEST(Numbers, ThirtyTwoBitsAreKeptTo) {
    const std::vector<std::pair<std::string, std::optional<std::int32_t>>> rows = {
        {"2121x", 2121},
        {"abc", 0},
        {"2147483647.4", std::numeric_limits<std::int32_t>::max()},
        {"-2147483648.5", std::numeric_limits<std::int32_t>::min()},
        {"2147483647.5", {}},
        {"-2147483649", {}},
        {std::string(400, '9'), {}},
    };
    for (const auto& [text, number] : rows) {
        if (number) {
            EXPECT_EQ(toInt32(text), *number) << text;
        } else {
            EXPECT_THROW(toInt32(text), ConversionError) << text;
        }
    }
}

TEST(Numbers, SwitchesAreReadByTwoRules) {
    struct Row {
        const char* text;
        bool isOn;                   // by the lenient rule of settings.ini
        std::optional<bool> boolean; // by the rule of sites.ini
    };
    const std::vector<Row> rows = {
        {"1", true, true},     {"0", false, false},       {"-1", true, true}, {"0.0", false, false},
        {" 2 ", true, true},   {"+1", true, true},        {"", false, {}},    {"yes", false, {}},
        {"True", false, true}, {" FALSE ", false, false}, {"1x", true, {}},   {"truer", false, {}},
        {"0.1", true, true},   {"-0", false, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(toSwitch(row.text), row.isOn) << '"' << row.text << '"';
        if (row.boolean) {
            EXPECT_EQ(toBoolean(row.text), *row.boolean) << '"' << row.text << '"';
        } else {
            EXPECT_THROW(toBoolean(row.text), ConversionError) << '"' << row.text << '"';
        }
    }
}

TEST(Numbers, DigitsAreGrouped) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"", ""},           {"0", "0"},        {"000", "0"},          {"007", "7"},
        {"999", "999"},     {"1000", "1.000"}, {"123456", "123.456"}, {"1234567", "1.234.567"},
        {"-1000", "-1000"}, {"12a4", "12a4"},
    };
    for (const auto& [digits, grouped] : rows) {
        EXPECT_EQ(groupThousands(digits, "."), grouped) << digits;
    }
}

TEST(Errors, CarryTheOffendingTextButNoMoreThanALine) {
    EXPECT_STREQ(ConversionError("abc", "number").what(), "\"abc\" is no number");
    const std::string longText(1000, 'x');
    EXPECT_EQ(std::string(InvalidArgument(longText, "is too short").what()),
              '"' + std::string(80, 'x') + "...\" is too short");
}

} // namespace
} // namespace corvel

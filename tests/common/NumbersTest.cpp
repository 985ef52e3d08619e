#include "common/Numbers.h"

#include "common/Errors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
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
        {"digits, then letters", "21abc", 21, true, false},
        {"blanks around", "  21 ", 21, true, true},
        {"a tab is no blank", "\t21", 0, false, false},
        {"minus", "-9.7", -9.7, true, true},
        {"plus", "+5", 5, true, true},
        {"two signs", "+-5", 0, false, false},
        {"sign, blank, digits", "- 5", 0, false, false},
        {"no digit in front of the point", ".5", 0.5, true, true},
        {"no digit behind the point", "5.", 5, true, true},
        {"a point alone", ".", 0, false, false},
        {"no exponent", "1e5", 1, true, false},
        {"no decimal comma", "1,5", 1, true, false},
        {"no hexadecimal", "0x10", 0, true, false},
        {"too large", std::string(400, '9'), infinity, true, true},
        {"too large, negative", "-" + std::string(400, '9'), -infinity, true, true},
        {"too small", "0." + std::string(400, '0') + "1", 0, true, true},
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

// Every good text gives its number, every bad one an error.
template <typename Number, typename Read>
void expectReads(Read read, const std::vector<std::pair<const char*, Number>>& good,
                 const std::vector<const char*>& bad) {
    for (const auto& [text, number] : good) {
        EXPECT_EQ(read(text), number) << text;
    }
    for (const char* text : bad) {
        EXPECT_THROW(read(text), ConversionError) << text;
    }
}

TEST(Numbers, IntegersAreKeptToTheirWidth) {
    expectReads<std::int32_t>(toInt32,
                              {{"2121x", 2121},
                               {"2147483647.4", std::numeric_limits<std::int32_t>::max()},
                               {"-2147483648.5", std::numeric_limits<std::int32_t>::min()}},
                              {"2147483647.5", "-2147483649", "99999999999999999999"});
    expectReads<std::int16_t>(toInt16,
                              {{"x9", 0}, {"7 | ", 7}, {"2.5", 2}, {"32767.4", 32767}, {"-32768", -32768}},
                              {"32768", "-32769", "32767.6", "99999999999999999999"});
    EXPECT_EQ(tryInt16("32768"), std::nullopt);
}

TEST(Numbers, AmountsAreReadStrictly) {
    expectReads<std::int64_t>(toCurrency,
                              {{" -1.5 ", -15000},
                               {"+2", 20000},
                               {".25", 2500},
                               {"0.00005", 0},
                               {"0.00015", 2},
                               {"922337203685477.5807", std::numeric_limits<std::int64_t>::max()},
                               {"-922337203685477.5808", std::numeric_limits<std::int64_t>::min()}},
                              {"922337203685477.5808", "", " ", ".", "12x", "1 2", "1e5", "--1"});
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

TEST(Numbers, AreWrittenExactlyAtAnySize) {
    const std::vector<std::pair<const char*, const char*>> plain = {
        {"", "0"},    {" +5x", "5"},      {"-0.2", "0"}, {"-7.6", "-8"},
        {"1.5", "2"}, {"2.5000001", "3"}, {"9.5", "10"},
    };
    for (const auto& [text, written] : plain) {
        EXPECT_EQ(wholeNumberText(text), written) << text;
    }
    const std::vector<std::pair<const char*, const char*>> times1024 = {
        {"abc", "0"}, {".5", "512"}, {"0.00048828125", "0"}, {"0.00146484375", "2"}, {"-2", "-2048"},
    };
    for (const auto& [text, written] : times1024) {
        EXPECT_EQ(wholeNumberText(text, 1024), written) << text;
    }
    EXPECT_EQ(wholeNumberText("99999999999999999999.5"), "100000000000000000000");
    EXPECT_EQ(wholeNumberText("123456789012345678901234567890", 1024), "126419751948641975194864197519360");
    EXPECT_EQ(wholeNumberText(std::string(500, '9')), std::string(500, '9'));
}

TEST(Numbers, AreWrittenWithFewDecimals) {
    const std::vector<std::pair<double, const char*>> two = {
        {1, "1"}, {1.5, "1.5"}, {0.125, "0.12"}, {0.375, "0.38"}, {100, "100"}, {0.004, "0"}, {-0.004, "0"},
    };
    for (const auto& [number, written] : two) {
        EXPECT_EQ(numberText(number, 2), written);
    }
    EXPECT_EQ(numberText(1e15 + 0.5, 2), "1000000000000000.5");
    EXPECT_EQ(numberText(-1.25, 1), "-1.2");
    const std::vector<std::pair<double, const char*>> none = {
        {2.5, "2"},
        {100, "100"},
        {-0.4, "0"},
        {1e21, "1000000000000000000000"},
    };
    for (const auto& [number, written] : none) {
        EXPECT_EQ(numberText(number, 0), written);
    }
    EXPECT_EQ(numberText(std::numeric_limits<double>::max(), 9).size(), 309U);
}

TEST(Errors, CarryTheOffendingTextButNoMoreThanALine) {
    EXPECT_STREQ(ConversionError("abc", "number").what(), "\"abc\" is no number");
    const std::string longText(1000, 'x');
    EXPECT_EQ(std::string(InvalidArgument(longText, "is too short").what()),
              '"' + std::string(80, 'x') + "...\" is too short");
}

} // namespace
} // namespace corvel

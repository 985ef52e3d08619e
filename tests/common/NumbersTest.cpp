#include "common/Numbers.h"

#include "common/Errors.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvel {
namespace {

TEST(Numbers, AreReadFromTheStartOfAText) {
    struct Row {
        std::string text;
        double number;
        bool isLeading; // text begins with a number
        bool isWhole;   // and is nothing else
    };
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::vector<Row> rows = {
        {"", 0, false, false},
        {"21abc", 21, true, false},
        {"  21 ", 21, true, true},
        {"-9.7", -9.7, true, true},
        {".5", 0.5, true, true},
        {"1e5", 1, true, false},
        {std::string(400, '9'), infinity, true, true},
        {"-" + std::string(6000, '9'), -infinity, true, true},
        {std::string("2\0001", 3), 2, true, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(leadingNumber(row.text), row.number) << row.text;
        EXPECT_EQ(hasLeadingNumber(row.text), row.isLeading) << row.text;
        EXPECT_EQ(isNumber(row.text), row.isWhole) << row.text;
    }
    EXPECT_THROW(toNumber("21abc"), ConversionError);
}

// Every good text gives its number, every bad one an error.
template <typename Number>
void expectReads(Number (*read)(std::string_view), const std::vector<std::pair<const char*, Number>>& good,
                 const std::vector<const char*>& bad) {
    for (const auto& [text, number] : good) {
        EXPECT_EQ(read(text), number) << text;
    }
    for (const char* text : bad) {
        EXPECT_THROW(read(text), ConversionError) << text;
    }
}

TEST(Numbers, AreKeptToTheRangeOfTheirKind) {
    expectReads<std::int32_t>(toInt32,
                              {{"2121x", 2121},
                               {"2147483647.4", std::numeric_limits<std::int32_t>::max()},
                               {"-2147483648.5", std::numeric_limits<std::int32_t>::min()}},
                              {"2147483647.5", "-2147483649", "99999999999999999999"});
    expectReads<std::int16_t>(toInt16,
                              {{"x9", 0}, {"7 | ", 7}, {"2.5", 2}, {"32767.4", 32767}, {"-32768", -32768}},
                              {"32768", "-32769", "32767.6"});
    EXPECT_EQ(tryInt16("32768"), std::nullopt);
    expectReads<std::int64_t>(toCurrency,
                              {{" -1.5 ", -15000},
                               {"0.00015", 2},
                               {"0.00005000000000000000000001", 1},
                               {"123456789012345.67899", 1234567890123456790},
                               {"922337203685477.5807", std::numeric_limits<std::int64_t>::max()},
                               {"-922337203685477.5808", std::numeric_limits<std::int64_t>::min()}},
                              {"922337203685477.5808", "", ".", "12x", "1 2", "1e5"});
    expectReads<bool>(toBoolean,
                      {{"1", true}, {"0.0", false}, {"-1", true}, {"True", true}, {" FALSE ", false}},
                      {"", "yes", "1x", "truer"});
}

TEST(Numbers, AreWritten) {
    EXPECT_EQ(groupThousands("0123456", "."), "123.456");
    EXPECT_EQ(groupThousands("-1000", "."), "-1000");
    for (const auto& [text, written] : std::vector<std::pair<const char*, const char*>>{
             {"", "0"}, {"-7.6", "-8"}, {"2.5", "2"}, {"9.5", "10"}}) {
        EXPECT_EQ(wholeNumberText(text), written) << text;
    }
    EXPECT_EQ(wholeNumberText("0.00146484375", 1024), "2");
    EXPECT_EQ(wholeNumberText("9007199254740993", 1024), "9223372036854776832");
    EXPECT_EQ(wholeNumberText("0001234567890123456789"), "1234567890123456789");
    EXPECT_EQ(wholeNumberText(std::string(6000, '9')).size(), 309U);
    EXPECT_EQ(numberText(1.5, 2) + numberText(0.125, 2) + numberText(100, 2), "1.50.12100");
}

} // namespace
} // namespace corvel

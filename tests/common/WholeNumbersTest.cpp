#include "common/Errors.h"
#include "common/Numbers.h"
#include "common/Text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

TEST(WholeNumbers, AreWrittenExactlyAtAnySize) {
    struct Row {
        const char* text;
        std::uint32_t factor;
        const char* written;
    };
    const std::vector<Row> rows = {
        {"", 1, "0"},
        {"abc", 1024, "0"},
        {"0100", 1, "100"},
        {" +5x", 1, "5"},
        {"000", 7, "0"},
        {"-0.2", 1, "0"},
        {"-7.6", 1, "-8"},
        {"0.5", 1, "0"},
        {"1.5", 1, "2"},
        {"2.5", 1, "2"},
        {"2.5000001", 1, "3"},
        {"9.5", 1, "10"},
        {".5", 1024, "512"},
        {"1.", 1024, "1024"},
        {"0.00048828125", 1024, "0"},
        {"0.00146484375", 1024, "2"},
        {"2", 1024, "2048"},
        {"-2", 1024, "-2048"},
        {"1e5", 1, "1"},
        {"123456789012345678901234567890", 1024, "126419751948641975194864197519360"},
        {"99999999999999999999.5", 1, "100000000000000000000"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(wholeNumberText(row.text, row.factor), row.written) << row.text << " * " << row.factor;
    }
    EXPECT_EQ(wholeNumberText(std::string(500, '9')), std::string(500, '9'));
}

TEST(WholeNumbers, SixteenBitsAreKeptTo) {
    const std::vector<std::pair<const char*, std::optional<std::int16_t>>> rows = {
        {"", 0},
        {"x9", 0},
        {"+7", 7},
        {" 7", 7},
        {"7 | ", 7},
        {"2.5", 2},
        {"32767", 32767},
        {"32767.4", 32767},
        {"-32768", -32768},
        {"32768", {}},
        {"-32769", {}},
        {"32767.6", {}},
        {"99999999999999999999", {}},
    };
    for (const auto& [text, number] : rows) {
        EXPECT_EQ(tryInt16(text), number) << text;
        if (!number) {
            EXPECT_THROW(toInt16(text), ConversionError) << text;
        }
    }
}

TEST(WholeNumbers, AmountsAreReadStrictly) {
    const std::vector<std::pair<const char*, std::optional<std::int64_t>>> rows = {
        {"0", 0},
        {"1536", 15360000},
        {" -1.5 ", -15000},
        {"+2", 20000},
        {".25", 2500},
        {"0.00005", 0},
        {"0.00015", 2},
        {"922337203685477.5807", std::numeric_limits<std::int64_t>::max()},
        {"-922337203685477.5808", std::numeric_limits<std::int64_t>::min()},
        {"922337203685477.5808", {}},
        {"", {}},
        {" ", {}},
        {".", {}},
        {"12x", {}},
        {"1 2", {}},
        {"1e5", {}},
        {"--1", {}},
        {"n/a", {}},
    };
    for (const auto& [text, amount] : rows) {
        if (amount) {
            EXPECT_EQ(toCurrency(text), *amount) << text;
        } else {
            EXPECT_THROW(toCurrency(text), ConversionError) << text;
        }
    }
}

TEST(Fields, AreCutWhereSplitCuts) {
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
        }
    }
}

} // namespace
} // namespace corvel

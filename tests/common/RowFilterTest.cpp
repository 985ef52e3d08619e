#include "common/RowFilter.h"

#include <gtest/gtest.h>

namespace corvel {
namespace {

RowTexts people() {
    RowTexts texts;
    const std::vector<std::vector<std::string>> rows = {{"   7", "bob", "staff"},
                                                        {"   8", "Bobby", "guests"},
                                                        {"  70", "\xC3\x89milie", "Staff"},
                                                        {"   9", "\xC9mil", "x"}};
    for (const auto& row : rows) {
        for (const std::string& cell : row) {
            texts.addCell(cell);
        }
        texts.endRow();
    }
    return texts;
}

TEST(RowFilter, EveryWordIsInSomeColumnOfAMatchingRow) {
    struct Case {
        const char* filter;
        int always;
        std::vector<int> rows;
    };
    const std::vector<Case> cases = {
        {"", 0, {0, 1, 2, 3}},      {"  ", 0, {0, 1, 2, 3}}, {"BOB", 0, {0, 1}}, {"bob staff", 0, {0}},
        {"staff 7", 0, {0, 2}},     {"7bob", 0, {}}, // a word is not looked for across columns
        {"\xC3\xA9mil", 0, {2, 3}}, {"nobody", 2, {0, 1}},
    };
    for (const Case& tried : cases) {
        EXPECT_EQ(matchingRows(people(), filterWords(tried.filter), tried.always), tried.rows)
            << tried.filter;
    }
    EXPECT_EQ(matchingRows(people(), {"b"}, {1, 3}), std::vector{1});
}

TEST(RowFilter, OneMoreLetterNarrows) {
    EXPECT_TRUE(narrows({"bobb", "st"}, {"st", "bob"}));
    EXPECT_FALSE(narrows({"bo"}, {"bob"}));
    EXPECT_FALSE(narrows({"bob"}, {"bob", "st"}));
}

} // namespace
} // namespace corvel

#include "admin/Sequence.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(BatchLines, GivesEveryLineThatIsNotEmptyOnce) {
    struct Row {
        const char* name;
        std::string text;
        std::vector<std::string> lines;
    };
    const std::vector<Row> rows = {
        {"nothing", "", {}},
        {"only line ends", "\r\n\r\n", {}},
        {"ended lines", "a\r\nb\r\n", {"a", "b"}},
        {"last line without an end", "a\r\nb", {"a", "b"}},
        {"empty lines between", "\r\na\r\n\r\n\r\nb\r\n\r\n", {"a", "b"}},
        {"a lone line feed belongs to its line", "a\nb\r\n", {"a\nb"}},
    };
    for (const Row& row : rows) {
        BatchLines lines(row.text);
        EXPECT_EQ(lines.total(), row.lines.size()) << row.name;
        for (std::size_t i = 0; i < row.lines.size(); ++i) {
            EXPECT_EQ(lines.left(), row.lines.size() - i) << row.name;
            EXPECT_EQ(lines.takeNext(), row.lines[i]) << row.name;
        }
        EXPECT_EQ(lines.takeNext(), std::nullopt) << row.name;
        EXPECT_EQ(lines.left(), 0U) << row.name;
    }
}

} // namespace
} // namespace corvel

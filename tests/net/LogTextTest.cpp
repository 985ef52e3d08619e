#include "net/LogText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using Style = LogText::Style;

TEST(LogText, WritesItsLinesAndKeepsTheLastCharacters) {
    struct Row {
        const char* name;
        Style style;
        std::vector<std::string> messages;
        std::string kept; // of 12 characters
    };
    const std::vector<Row> rows = {
        {"a line", Style::linesEnd, {"ab"}, "t ab\r\n"},
        {"lines, and empty ones", Style::linesEnd, {"a\r\n\r\nb\r\n"}, "t a\r\nt b\r\n"},
        {"nothing", Style::linesPart, {"", "\r\n"}, ""},
        {"empty lines push nothing out", Style::linesEnd, {"ab\r\n\r\n\r\n\r\n\r\n\r\n\r\n"}, "t ab\r\n"},
        {"parted lines", Style::linesPart, {"a", "b"}, "[t] a\r\n[t] b"},
        {"past the limit", Style::linesEnd, {"a", "b", "c"}, "\r\nt b\r\nt c\r\n"},
        {"one long line", Style::linesEnd, {"abcdefghijklmnop"}, "ghijklmnop\r\n"},
        {"characters, not bytes", Style::linesEnd, {"äöüß€€€€"}, "t äöüß€€€€\r\n"},
        {"every line for itself", Style::linesEnd, {"\xC3\xA9\r\n\xE9"}, "t é\r\nt é\r\n"},
        {"what steers is shown", Style::linesEnd, {"a\x1B[2J"}, "t a␛[2J\r\n"},
        {"the end of a long message",
         Style::linesEnd,
         {std::string(999, 'x') + "\r\nab\r\nc"},
         "\nt ab\r\nt c\r\n"},
    };
    for (const Row& row : rows) {
        LogText log(12, row.style);
        for (const std::string& message : row.messages) {
            log.append(message, "t");
        }
        EXPECT_EQ(log.text(), row.kept) << row.name;
    }
}

} // namespace
} // namespace corvel

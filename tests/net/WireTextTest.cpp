#include "common/Text.h"
#include "net/LogText.h"
#include "net/ReplyBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Telnet, CommandsInFrontOfALineAreTakenOffHoweverTheyAreCut) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"\xFF\xFC\x01\x35\x35\x30 no\r\n", "550 no\r\n"},
        {"211-a\r\n\xFF\xFB\x01\xFF\xF1\xFF\xFE\r211 b\r\n", "211-a\r\n211 b\r\n"},
        {"\xFF\xFA\x18\xFF\xFF\xF0x\xFF\xF0 200 ok\r\n", " 200 ok\r\n"}, // a negotiation with an FF in it
        {"211- \xFF\xFF\xFF\xFF x\r\n", "211- \xFF\xFF x\r\n"},
        // Inside a line, and where no command follows, everything else is text.
        {"-\xFF\xFC\x01 \xFF\xF1\r\n", "-\xFF\xFC\x01 \xFF\xF1\r\n"},
        {"-\xFF\r\n\xFF\xF1-\r\n", "-\xFF\r\n-\r\n"},
    };
    for (const auto& [bytes, plain] : rows) {
        for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
            TelnetReader reader;
            const std::string first = reader.read(bytes.substr(0, cut));
            EXPECT_EQ(first + reader.read(bytes.substr(cut)), plain) << "cut at " << cut;
        }
    }
}

const std::vector<std::pair<std::string, bool>> replies = {
    {"220 ready\n", false},
    {"211-status of /:\r\n", false},
    {"211-status of /:\r\n drwx\r\n211 End\r\n", true},
    {"211-x\r\n123 early\r\nmore\r\n", true},
    {"220 \r\n", true},
    {"x\n220 y\r\n", false},
    {"\r\n220 x\r\n", true},
    {std::string("\0\r\n220 x\r\n", 10), true},
};

// What the reply's definition says about the whole of the bytes.
bool isCompleteByDefinition(const std::string& bytes) {
    return matchesPattern(bytes, "*\r\n### *\r\n") || matchesPattern(bytes, "### *\r\n");
}

// bytes up to their last line end.
std::string wholeLines(const std::string& bytes) {
    const std::size_t end = bytes.rfind(lineEnd);
    return end == std::string::npos ? std::string() : bytes.substr(0, end + lineEnd.size());
}

TEST(ReplyBuffer, KnowsACompleteReplyHoweverItWasCut) {
    for (const auto& [bytes, isComplete] : replies) {
        ReplyBuffer byByte;
        std::string lines;
        const std::string whole = wholeLines(bytes);
        std::vector<std::string_view> expected = split(whole, lineEnd);
        const std::string_view first = expected.front();
        std::erase(expected, "");
        const std::string_view last = expected.empty() ? "" : expected.back();
        for (std::size_t size = 1; size <= bytes.size(); ++size) {
            const auto take = [&lines](std::string_view line) { lines.append(line).append("\r\n"); };
            EXPECT_EQ(byByte.append(bytes.substr(size - 1, 1), take) == ReplyProgress::complete,
                      isCompleteByDefinition(bytes.substr(0, size)))
                << bytes << " byte " << size;
            ReplyBuffer inTwo;
            inTwo.append(bytes.substr(0, size));
            EXPECT_EQ(inTwo.append(bytes.substr(size)) == ReplyProgress::complete, isComplete)
                << bytes << " cut at " << size;
            EXPECT_EQ(inTwo.firstLine(), first) << bytes << " cut at " << size;
            EXPECT_EQ(inTwo.lastLine(), last) << bytes << " cut at " << size;
        }
        EXPECT_EQ(lines, whole);
    }
}

TEST(ReplyBuffer, LimitsALine) {
    const std::string longest(ReplyBuffer::longestLine, 'x');
    ReplyBuffer atLimit;
    EXPECT_EQ(atLimit.append(longest + "\r"), ReplyProgress::incomplete);
    EXPECT_EQ(atLimit.append("\n"), ReplyProgress::incomplete);
    EXPECT_EQ(ReplyBuffer().append(longest + "xx"), ReplyProgress::lineTooLong);
}

TEST(ReplyBuffer, LimitsTheBytesOfAReply) {
    ReplyBuffer buffer;
    const std::string chunk = std::string(1022, 'x') + "\r\n";
    for (std::size_t arrived = 0; arrived < ReplyBuffer::longestReply; arrived += chunk.size()) {
        ASSERT_EQ(buffer.append(chunk), ReplyProgress::incomplete);
    }
    EXPECT_EQ(buffer.append(chunk), ReplyProgress::replyTooLong);
    buffer.clear();
    EXPECT_EQ(buffer.append("220 x\r\n"), ReplyProgress::complete);
}

using Style = LogText::Style;

TEST(LogText, WritesItsLinesAndKeepsTheLastCharacters) {
    struct Row {
        const char* name;
        Style style;
        std::vector<std::string> messages;
        std::string kept; // of 12 characters
    };
    const std::vector<Row> rows = {
        {"lines, and empty ones", Style::linesEnd, {"a\r\n\r\nb\r\n"}, "t a\r\nt b\r\n"},
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
        const auto lineCount = static_cast<std::size_t>(std::ranges::count(log.text(), '\n')) +
                               (row.style == Style::linesPart ? 1 : 0);
        EXPECT_EQ(log.lines().size(), lineCount) << row.name;
    }
}

TEST(LogText, KnowsWhatItsLinesAre) {
    LogText log(40, Style::linesEnd);
    log.append("> PWD", "t", LogLine::command);
    log.append("250-550 files\r\n550 no\r\n421-bye\r\n4 x\r\n550", "t");
    using enum LogLine;
    std::vector<LogLine> kinds;
    std::ranges::transform(log.lines(), std::back_inserter(kinds), &LogText::Line::kind);
    EXPECT_EQ(kinds, (std::vector{reply, refusal, refusal, reply, reply})) << log.text();
    EXPECT_EQ(log.unreadRefusals(), 2U);
    log.append("550 said the program", "t", event);
    EXPECT_EQ(log.lines().back().kind, event);
    log.clear();
    EXPECT_TRUE(log.text().empty() && log.lines().empty());
}

} // namespace
} // namespace corvel

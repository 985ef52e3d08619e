#include "net/ReplyBuffer.h"

#include "common/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

struct ReplyCase {
    const char* name;
    std::string bytes;
    bool complete;
};

const std::vector<ReplyCase> replies = {
    {"one line", "220 ready\r\n", true},
    {"no line end", "220 ready", false},
    {"only a carriage return", "220 ready\r", false},
    {"only a line feed", "220 ready\n", false},
    {"a hyphen goes on", "211-status of /:\r\n", false},
    {"multi-line with its end", "211-status of /:\r\n drwx\r\n211 End\r\n", true},
    {"end in the middle, whole last line", "211-x\r\n123 early\r\nmore\r\n", true},
    {"end in the middle, cut last line", "211-x\r\n123 early\r\nmo", false},
    {"code without a blank", "220\r\n", false},
    {"code and blank alone", "220 \r\n", true},
    {"code behind a line feed is no line start", "x\n220 y\r\n", false},
    {"code behind a carriage return is no line start", "x\r220 y\r\n", false},
    {"two digits and a letter", "22a x\r\n", false},
    {"empty line first", "\r\n220 x\r\n", true},
    {"NUL is data", std::string("220 a\0b\r\n", 9), true},
    {"code behind a NUL", std::string("\0\r\n220 x\r\n", 10), true},
};

// What the reply's definition says about the whole of the bytes.
bool isCompleteByDefinition(const std::string& bytes) {
    return matchesPattern(bytes, "*\r\n### *\r\n") || matchesPattern(bytes, "### *\r\n");
}

TEST(ReplyBuffer, KnowsACompleteReply) {
    for (const ReplyCase& row : replies) {
        ReplyBuffer buffer;
        EXPECT_EQ(buffer.append(row.bytes) == ReplyProgress::complete, row.complete) << row.name;
        EXPECT_EQ(isCompleteByDefinition(row.bytes), row.complete) << row.name;
        EXPECT_EQ(buffer.take(), row.bytes) << row.name;
    }
}

TEST(ReplyBuffer, GivesTheSameAnswerForEveryPrefixHoweverItWasCut) {
    for (const ReplyCase& row : replies) {
        ReplyBuffer byByte;
        for (std::size_t size = 1; size <= row.bytes.size(); ++size) {
            const std::string prefix = row.bytes.substr(0, size);
            const bool expected = isCompleteByDefinition(prefix);
            EXPECT_EQ(byByte.append(row.bytes.substr(size - 1, 1)) == ReplyProgress::complete, expected)
                << row.name << " byte " << size;
            ReplyBuffer inTwo;
            inTwo.append(row.bytes.substr(0, size));
            const ReplyProgress progress = inTwo.append(row.bytes.substr(size));
            EXPECT_EQ(progress == ReplyProgress::complete, row.complete) << row.name << " cut at " << size;
        }
    }
}

TEST(ReplyBuffer, LimitsALine) {
    const std::string longest(ReplyBuffer::longestLine, 'x');
    ReplyBuffer atLimit;
    EXPECT_EQ(atLimit.append(longest), ReplyProgress::incomplete);
    EXPECT_EQ(atLimit.append("\r"), ReplyProgress::incomplete);
    EXPECT_EQ(atLimit.append("\n"), ReplyProgress::incomplete);

    ReplyBuffer endless;
    EXPECT_EQ(endless.append(longest + "xx"), ReplyProgress::lineTooLong);
    ReplyBuffer whole;
    EXPECT_EQ(whole.append(longest + "x\r\n220 x\r\n"), ReplyProgress::lineTooLong);
    ReplyBuffer behindTheEnd;
    behindTheEnd.append("220 x\r\n");
    EXPECT_EQ(behindTheEnd.append(longest + "xx"), ReplyProgress::lineTooLong);
}

TEST(ReplyBuffer, LimitsAReplyAndItsMemory) {
    const std::string chunk = std::string(1022, 'x') + "\r\n";
    ReplyBuffer buffer;
    std::size_t arrived = 0;
    while (arrived < ReplyBuffer::longestReply) {
        ASSERT_EQ(buffer.append(chunk), ReplyProgress::incomplete);
        arrived += chunk.size();
    }
    EXPECT_EQ(buffer.append(chunk), ReplyProgress::replyTooLong);
    buffer.clear();
    EXPECT_EQ(buffer.append("220 x\r\n"), ReplyProgress::complete);
}

TEST(ReplyBuffer, LimitsTheLinesOfAReply) {
    ReplyBuffer buffer;
    std::string chunk;
    for (int i = 0; i < 1000; ++i) {
        chunk += "a\r\n";
    }
    for (std::size_t lines = 0; lines < ReplyBuffer::mostLines; lines += 1000) {
        ASSERT_EQ(buffer.append(chunk), ReplyProgress::incomplete);
    }
    EXPECT_EQ(buffer.lineCount(), ReplyBuffer::mostLines);
    EXPECT_EQ(buffer.append("211 end\r\n"), ReplyProgress::tooManyLines);
    buffer.clear();
    EXPECT_EQ(buffer.append("220 x\r\n"), ReplyProgress::complete);
}

} // namespace
} // namespace corvel

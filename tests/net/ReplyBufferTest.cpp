#include "net/ReplyBuffer.h"

#include "common/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

const std::vector<std::pair<std::string, bool>> replies = {
    {"220 ready\r\n", true},
    {"220 ready\n", false},
    {"211-status of /:\r\n", false},
    {"211-status of /:\r\n drwx\r\n211 End\r\n", true},
    {"211-x\r\n123 early\r\nmore\r\n", true},
    {"211-x\r\n123 early\r\nmo", false},
    {"220\r\n", false},
    {"220 \r\n", true},
    {"x\n220 y\r\n", false},
    {"x\r220 y\r\n", false},
    {"22a x\r\n", false},
    {"\r\n220 x\r\n", true},
    {std::string("220 a\0b\r\n", 9), true},
    {std::string("\0\r\n220 x\r\n", 10), true},
};

// What the reply's definition says about the whole of the bytes.
bool isCompleteByDefinition(const std::string& bytes) {
    return matchesPattern(bytes, "*\r\n### *\r\n") || matchesPattern(bytes, "### *\r\n");
}

TEST(ReplyBuffer, KnowsACompleteReplyHoweverItWasCut) {
    for (const auto& [bytes, isComplete] : replies) {
        ReplyBuffer byByte;
        for (std::size_t size = 1; size <= bytes.size(); ++size) {
            EXPECT_EQ(byByte.append(bytes.substr(size - 1, 1)) == ReplyProgress::complete,
                      isCompleteByDefinition(bytes.substr(0, size)))
                << bytes << " byte " << size;
            ReplyBuffer inTwo;
            inTwo.append(bytes.substr(0, size));
            EXPECT_EQ(inTwo.append(bytes.substr(size)) == ReplyProgress::complete, isComplete)
                << bytes << " cut at " << size;
        }
        EXPECT_EQ(byByte.take(), bytes);
    }
}

TEST(ReplyBuffer, LimitsALine) {
    const std::string longest(ReplyBuffer::longestLine, 'x');
    ReplyBuffer atLimit;
    EXPECT_EQ(atLimit.append(longest + "\r"), ReplyProgress::incomplete);
    EXPECT_EQ(atLimit.append("\n"), ReplyProgress::incomplete);
    EXPECT_EQ(ReplyBuffer().append(longest + "xx"), ReplyProgress::lineTooLong);
    EXPECT_EQ(ReplyBuffer().append(longest + "x\r\n220 x\r\n"), ReplyProgress::lineTooLong);
    EXPECT_EQ(atLimit.append("220 x\r\n" + longest + "xx"), ReplyProgress::lineTooLong) << "behind the end";
}

TEST(ReplyBuffer, LimitsBytesAndLinesOfAReply) {
    ReplyBuffer buffer;
    const std::string chunk = std::string(1022, 'x') + "\r\n";
    for (std::size_t arrived = 0; arrived < ReplyBuffer::longestReply; arrived += chunk.size()) {
        ASSERT_EQ(buffer.append(chunk), ReplyProgress::incomplete);
    }
    EXPECT_EQ(buffer.append(chunk), ReplyProgress::replyTooLong);
    buffer.clear();
    for (std::size_t lines = 0; lines < ReplyBuffer::mostLines; ++lines) {
        ASSERT_EQ(buffer.append("a\r\n"), ReplyProgress::incomplete);
    }
    EXPECT_EQ(buffer.append("211 end\r\n"), ReplyProgress::tooManyLines);
    buffer.clear();
    EXPECT_EQ(buffer.append("220 x\r\n"), ReplyProgress::complete);
}

} // namespace
} // namespace corvel

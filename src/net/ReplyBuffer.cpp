#include "net/ReplyBuffer.h"

#include "common/Numbers.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace corvel {

namespace {

// Whether the line is the last one of a reply: three digits and a blank.
bool isFinalLine(const char* line, std::size_t size) {
    return size >= 4 && isDigit(line[0]) && isDigit(line[1]) && isDigit(line[2]) && line[3] == ' ';
}

} // namespace

ReplyProgress ReplyBuffer::append(std::string_view bytes) {
    const std::size_t before = text_.size();
    grow(bytes.size());
    text_.append(bytes);
    if (!scanLines(bytes, before)) {
        return ReplyProgress::lineTooLong;
    }
    if (lines_ > mostLines) {
        return ReplyProgress::tooManyLines;
    }
    if (finalLineSeen_ && lineStart_ == text_.size()) {
        return ReplyProgress::complete;
    }
    return text_.size() > longestReply ? ReplyProgress::replyTooLong : ReplyProgress::incomplete;
}

std::string ReplyBuffer::take() {
    lineStart_ = 0;
    lines_ = 0;
    finalLineSeen_ = false;
    return std::exchange(text_, {});
}

// Growing by half keeps old and new storage together below 2.5 times the bytes that are held.
void ReplyBuffer::grow(std::size_t more) {
    const std::size_t needed = text_.size() + more;
    if (needed > text_.capacity()) {
        text_.reserve(std::max(needed, text_.capacity() + text_.capacity() / 2));
    }
}

// Advances over the lines that bytes, which stand at position before of the text, have made whole; false when
// a line is too long. The search runs over the chunk, not over its fresh copy: reading what was written just
// now waits for the processor's store buffer.
bool ReplyBuffer::scanLines(std::string_view bytes, std::size_t before) {
    const char* const begin = bytes.data();
    const char* const end = begin + bytes.size();
    const char* search = begin;
    while (search < end) {
        const void* found = std::memchr(search, '\n', static_cast<std::size_t>(end - search));
        if (found == nullptr) {
            break;
        }
        const char* const lineFeed = static_cast<const char*>(found);
        search = lineFeed + 1;
        const std::size_t position = before + static_cast<std::size_t>(lineFeed - begin);
        const char previous = lineFeed > begin ? lineFeed[-1] : position > 0 ? text_[position - 1] : '\0';
        if (previous != '\r') {
            continue;
        }
        const std::size_t size = position - 1 - lineStart_;
        if (size > longestLine) {
            return false;
        }
        const char* const line = lineStart_ >= before ? begin + (lineStart_ - before) : &text_[lineStart_];
        finalLineSeen_ = finalLineSeen_ || isFinalLine(line, size);
        lineStart_ = position + 1;
        ++lines_;
    }
    return text_.size() - lineStart_ <= longestLine + 1; // one more for a CR whose LF is still to come
}

} // namespace corvel

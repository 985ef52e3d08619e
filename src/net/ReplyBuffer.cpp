#include "net/ReplyBuffer.h"

#include "common/Numbers.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace corvel {

namespace {

constexpr char commandByte = '\xFF';

unsigned valueOf(char byte) {
    return static_cast<unsigned char>(byte);
}

constexpr unsigned firstCommand = 0xF0; // and the end of a negotiation
constexpr unsigned beginNegotiation = 0xFA;
constexpr unsigned firstWithOption = 0xFB; // WILL, WON'T, DO, DON'T

// Whether the line is the last one of a reply: three digits and a blank.
bool isFinalLine(const char* line, std::size_t size) {
    return size >= 4 && isDigit(line[0]) && isDigit(line[1]) && isDigit(line[2]) && line[3] == ' ';
}

} // namespace

std::string TelnetReader::read(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + 1);
    for (const char byte : bytes) {
        switch (state_) {
        case State::data:
            if (byte == commandByte) {
                state_ = State::command;
            } else {
                put(text, byte);
            }
            break;
        case State::command:
            afterCommandByte(text, byte);
            break;
        case State::option:
            state_ = State::data;
            break;
        case State::negotiation:
            state_ = byte == commandByte ? State::negotiationCommand : State::negotiation;
            break;
        case State::negotiationCommand:
            state_ = valueOf(byte) == firstCommand ? State::data : State::negotiation;
            break;
        }
    }
    return text;
}

// Behind an FF.
void TelnetReader::afterCommandByte(std::string& text, char byte) {
    state_ = State::data;
    if (byte == commandByte) {
        put(text, byte);
    } else if (!isLineStart_ || valueOf(byte) < firstCommand) {
        put(text, commandByte);
        put(text, byte);
    } else if (valueOf(byte) >= firstWithOption) {
        state_ = State::option;
    } else if (valueOf(byte) == beginNegotiation) {
        state_ = State::negotiation;
    }
}

void TelnetReader::put(std::string& text, char byte) {
    isLineStart_ = last_ == '\r' && byte == '\n';
    last_ = byte;
    text += byte;
}

std::string telnetEscaped(std::string_view line) {
    std::string escaped;
    for (std::size_t i = 0; i < line.size(); ++i) {
        escaped += line[i];
        if (line[i] == commandByte && i + 1 < line.size() && valueOf(line[i + 1]) >= firstCommand) {
            escaped += commandByte;
        }
    }
    return escaped;
}

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
    if (finalLineEnd_ > 0 && lineStart_ == text_.size()) {
        return ReplyProgress::complete;
    }
    return text_.size() > longestReply ? ReplyProgress::replyTooLong : ReplyProgress::incomplete;
}

std::string ReplyBuffer::take() {
    lineStart_ = 0;
    lines_ = 0;
    finalLineEnd_ = 0;
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
        lineStart_ = position + 1;
        if (finalLineEnd_ == 0 && isFinalLine(line, size)) {
            finalLineEnd_ = lineStart_;
        }
        ++lines_;
    }
    return text_.size() - lineStart_ <= longestLine + 1; // one more for a CR whose LF is still to come
}

} // namespace corvel

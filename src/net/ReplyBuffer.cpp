#include "net/ReplyBuffer.h"

#include "common/Numbers.h"

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
bool isFinalLine(std::string_view line) {
    return line.size() >= 4 && isDigit(line[0]) && isDigit(line[1]) && isDigit(line[2]) && line[3] == ' ';
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

ReplyProgress ReplyBuffer::append(std::string_view bytes, const LineTaker& take) {
    const std::size_t before = size_;
    size_ += bytes.size();
    keepCutLine();
    begun_ = partialLine_.size();
    std::size_t start = 0;       // of the line, in bytes
    std::string_view latestLine; // the last one that is not empty, in bytes
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos; end = bytes.find('\n', end + 1)) {
        const char previous = end > 0 ? bytes[end - 1] : partialLine_.empty() ? '\0' : partialLine_.back();
        if (previous != '\r') {
            continue;
        }
        if (partialLine_.size() + end - start > longestLine + 1) { // one more for the CR
            return ReplyProgress::lineTooLong;
        }
        if (partialLine_.empty()) {
            const std::string_view line = bytes.substr(start, end - 1 - start);
            note(line, before + end + 1);
            latestLine = line.empty() ? latestLine : line;
            take(line);
        } else {
            partialLine_.append(bytes.substr(0, end)).pop_back();
            note(partialLine_, before + end + 1);
            take(partialLine_);
            cutLine_.swap(partialLine_);
            partialLine_.clear();
            isCutLast_ = !cutLine_.empty();
        }
        start = end + 1;
    }
    if (!latestLine.empty()) {
        lastLine_ = latestLine;
        isCutLast_ = false;
    }
    partialLine_ += bytes.substr(start, longestLine + 2);
    if (partialLine_.size() > longestLine + 1) { // one more for a CR whose LF is still to come
        return ReplyProgress::lineTooLong;
    }
    if (finalLineEnd_ > 0 && partialLine_.empty()) {
        return ReplyProgress::complete;
    }
    return size_ > longestReply ? ReplyProgress::replyTooLong : ReplyProgress::incomplete;
}

// The line that was cut is copied nowhere: as the next bytes come it takes the place of the last one.
void ReplyBuffer::keepCutLine() {
    if (isCutLast_) {
        lastLine_.swap(cutLine_);
        isCutLast_ = false;
    }
    cutLine_.clear();
}

// end: where the line ends in the reply.
void ReplyBuffer::note(std::string_view line, std::size_t end) {
    if (finalLineEnd_ == 0 && isFinalLine(line)) {
        finalLineEnd_ = end;
    }
    if (!hasLine_) {
        firstLine_ = line;
        hasLine_ = true;
    }
}

} // namespace corvel

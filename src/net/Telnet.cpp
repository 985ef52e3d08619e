#include "net/Telnet.h"

#include <algorithm>

namespace corvel {

namespace {

constexpr char commandByte = '\xFF';

unsigned valueOf(char byte) {
    return static_cast<unsigned char>(byte);
}

constexpr unsigned firstCommand = 0xF0; // and the end of a negotiation
constexpr unsigned beginNegotiation = 0xFA;
constexpr unsigned firstWithOption = 0xFB; // WILL, WON'T, DO, DON'T

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

} // namespace corvel

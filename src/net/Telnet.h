#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvel {

// The Telnet layer of a control connection (RFC 854, RFC 959 section 3.1) as far as it touches us: no option
// is ever asked for or agreed to.

// Takes the layer off what arrives. One for each connection.
class TelnetReader {
  public:
    // bytes without the Telnet commands in front of a line, and with FF FF as the one FF that it stands for;
    // every other FF inside a line is a byte of its text. However the bytes are cut, the result is the same
    // text; an FF at the end waits for what follows.
    std::string read(std::string_view bytes);

  private:
    enum class State : std::uint8_t { data, command, option, negotiation, negotiationCommand };

    void put(std::string& text, char byte);
    void afterCommandByte(std::string& text, char byte);

    State state_ = State::data;
    bool isLineStart_ = true;
    char last_ = '\0'; // of the text
};

// A line as it has to go out: an FF that would begin a Telnet command is doubled.
std::string telnetEscaped(std::string_view line);

} // namespace corvel

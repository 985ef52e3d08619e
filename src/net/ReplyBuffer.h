#pragma once

#include <cstddef>
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

// What the bytes so far amount to.
enum class ReplyProgress {
    incomplete,
    complete,
    replyTooLong, // more than ReplyBuffer::longestReply bytes without an end
    tooManyLines, // more than ReplyBuffer::mostLines
    lineTooLong,  // more than ReplyBuffer::longestLine bytes without a CR LF
};

// Assembles the reply to one command from the chunks in which it arrives (RFC 959, section 4.2). A reply is
// complete when its bytes end with CR LF and one of its lines begins with three digits and a blank. Every
// byte is looked at once, however the bytes were cut, and the buffer never takes more than 2.5 times what
// arrived.
class ReplyBuffer {
  public:
    static constexpr std::size_t longestReply = std::size_t{32} * 1024 * 1024;
    static constexpr std::size_t longestLine = std::size_t{64} * 1024;
    // A reply of this many lines that is not longer than longestReply has lines of 33 bytes: no listing and
    // no table has such short ones, and what points to lines shall not take more than the lines.
    static constexpr std::size_t mostLines = 1000000;

    // Takes the next bytes. After a "too long" the owner gives up the connection and calls clear.
    ReplyProgress append(std::string_view bytes);

    // The bytes so far, CR LF included; the buffer is empty afterwards.
    std::string take();
    void clear() { take(); }

    std::string_view text() const { return text_; }
    // How many lines with their CR LF these are.
    std::size_t lineCount() const { return lines_; }
    // Where the first line ends that can be the last of a reply; 0 while there is none.
    std::size_t finalLineEnd() const { return finalLineEnd_; }

  private:
    void grow(std::size_t more);
    bool scanLines(std::string_view bytes, std::size_t before);

    std::string text_;
    std::size_t lineStart_ = 0; // where the first line without a CR LF begins
    std::size_t lines_ = 0;
    std::size_t finalLineEnd_ = 0;
};

} // namespace corvel

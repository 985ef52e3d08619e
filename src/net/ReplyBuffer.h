#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
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
    lineTooLong,  // more than ReplyBuffer::longestLine bytes without a CR LF
};

// Finds the end of the reply to one command in the chunks in which it arrives (RFC 959, section 4.2). A reply
// is complete when its bytes end with CR LF and one of its lines begins with three digits and a blank. Every
// byte is looked at once, however the bytes were cut. Of a reply nothing is kept but its first line, its last
// one and the one that has not ended: a server chooses how long it is.
class ReplyBuffer {
  public:
    static constexpr std::size_t longestReply = std::size_t{32} * 1024 * 1024;
    static constexpr std::size_t longestLine = std::size_t{64} * 1024;

    // Takes a line without its CR LF; the text is good for the call.
    using LineTaker = std::function<void(std::string_view line)>;

    // Takes the next bytes, and gives the lines that they make whole to take. After a "too long" the owner
    // gives up the connection and calls clear; after a complete reply it calls clear, too.
    ReplyProgress append(std::string_view bytes, const LineTaker& take);
    ReplyProgress append(std::string_view bytes) {
        return append(bytes, [](std::string_view /*line*/) {});
    }
    void clear() { *this = {}; }

    std::size_t size() const { return size_; } // of all bytes so far
    const std::string& firstLine() const { return firstLine_; }
    const std::string& lastLine() const { return isCutLast_ ? cutLine_ : lastLine_; } // that is not empty
    // What had come of the line in whose middle the last bytes began, once that is whole.
    std::string begunLine() const { return (cutLine_ + "\r\n").substr(0, begun_); }
    // Where the first line ends that can be the last of a reply; 0 while there is none.
    std::size_t finalLineEnd() const { return finalLineEnd_; }

  private:
    void keepCutLine();
    void note(std::string_view line, std::size_t end);

    std::string partialLine_; // without its end
    std::string cutLine_;     // that the last bytes have made whole,
    std::size_t begun_ = 0;   // and how much of it had come before
    bool isCutLast_ = false;  // cutLine_ is the last line that is not empty
    std::string firstLine_;
    std::string lastLine_;
    std::size_t size_ = 0;
    std::size_t finalLineEnd_ = 0;
    bool hasLine_ = false;
};

} // namespace corvel

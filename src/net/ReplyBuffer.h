#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvel {

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

  private:
    void grow(std::size_t more);
    bool scanLines(std::string_view bytes, std::size_t before);

    std::string text_;
    std::size_t lineStart_ = 0; // where the first line without a CR LF begins
    std::size_t lines_ = 0;
    bool finalLineSeen_ = false;
};

} // namespace corvel

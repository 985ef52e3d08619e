#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace corvel {

// What a line of a log is, for the eye.
enum class LogLine : std::uint8_t { reply, refusal, command, event };

// The text of one log box: UTF-8, never more than a given number of characters; the oldest go first.
class LogText {
  public:
    // How a line is written.
    enum class Style : std::uint8_t {
        linesEnd,  // the time of day, a blank, the line, CR LF
        linesPart, // a CR LF where the log is not empty, the time in brackets, a blank, the line
    };

    // limit: the most characters (code points) that are kept.
    LogText(std::size_t limit, Style style) : limit_(limit), style_(style) {}

    // Adds every line of message that is not empty. message: bytes of a server, split at CR LF; each line is
    // read for itself, and what steers a display is written as visible symbols. time: UTF-8. line: what all
    // of them are; of a reply, those with a code that refuses (RFC 959, section 4.2) are refusals. Costs the
    // limit, not the message.
    void append(std::string_view message, std::string_view time, LogLine line = LogLine::reply);
    void clear();

    struct Line {
        std::string text; // with its line end; of the first one the beginning may be gone
        LogLine kind;
    };
    const std::deque<Line>& lines() const { return lines_; }
    // All of them.
    std::string text() const;
    // How many lines have gone at the front, since ever; and how many bytes of the first that is still there.
    std::size_t goneLines() const { return goneLines_; }
    std::size_t goneBytes() const { return goneBytes_; }
    // How many refusals came since the log was last read.
    std::size_t unreadRefusals() const { return unreadRefusals_; }
    void markRead() { unreadRefusals_ = 0; }

  private:
    std::string_view lastLines(std::string_view message) const;
    void appendLine(std::string_view line, std::string_view time, LogLine kind);
    void cut();

    std::size_t limit_;
    Style style_;
    std::size_t characters_ = 0;
    std::deque<Line> lines_;
    std::size_t goneLines_ = 0;
    std::size_t goneBytes_ = 0;
    std::size_t unreadRefusals_ = 0;
};

} // namespace corvel

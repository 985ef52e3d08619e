#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvel {

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
    // read for itself, and what steers a display is written as visible symbols. time: UTF-8. Costs the limit,
    // not the message.
    void append(std::string_view message, std::string_view time);

    const std::string& text() const { return text_; }

  private:
    std::string_view lastLines(std::string_view message) const;
    void appendLine(std::string_view line, std::string_view time);
    void cut();

    std::size_t limit_;
    Style style_;
    std::size_t characters_ = 0;
    std::string text_;
};

} // namespace corvel

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// Cuts the bytes of a client into command lines (RFC 959, section 5.3). A line ends with LF; a CR in front of
// it belongs to the line end. Holds at most longestLine bytes of an unfinished line, whatever arrives.
class DemoLineReader {
  public:
    static constexpr std::size_t longestLine = 4096;

    struct Line {
        std::string text;    // without its line end
        bool isLong = false; // there is no text: the line went past longestLine and is dropped to its end
    };

    // Takes what arrived, however it was cut.
    void add(std::string_view bytes);

    // The next line that arrived, or nothing. A line that is too long is told of once, as soon as it is.
    std::optional<Line> next();

  private:
    std::string bytes_;
    bool isDropping_ = false;
};

} // namespace corvel

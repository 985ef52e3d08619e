#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvel {

// The text of one log box: UTF-8, never more than a given number of characters; the oldest go first.
class LogText {
  public:
    // limit: the most characters (code points) that are kept.
    explicit LogText(std::size_t limit) : limit_(limit) {}

    void append(std::string_view text);

    const std::string& text() const { return text_; }

  private:
    std::size_t limit_;
    std::size_t characters_ = 0;
    std::string text_;
};

} // namespace corvel

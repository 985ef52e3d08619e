#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// The remaining lines of a multi-command sequence, separated by CR LF. Taking a line costs its own length,
// however many lines are left.
class BatchLines {
  public:
    BatchLines() = default;
    // lines: commands separated by CR LF; empty lines count for nothing.
    explicit BatchLines(std::string lines);

    // The first line that is not empty, dropped from the rest; nothing when none is left.
    std::optional<std::string> takeNext();

    // How many non-empty lines there were at first, and how many are left.
    std::size_t total() const { return total_; }
    std::size_t left() const { return left_; }

  private:
    std::string lines_;
    std::size_t position_ = 0;
    std::size_t total_ = 0;
    std::size_t left_ = 0;
};

} // namespace corvel

#pragma once

#include "common/Command.h"
#include "common/Ports.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvel {

// Commands that run one after the other: first, and behind it the lines of sBatchLines, each ended by CR LF.
// As it starts, sBegin is written to the log beginLog.
struct CommandSequence {
    std::string sBegin;
    LogKind beginLog = LogKind::console;
    std::string sBatchLines;
    Command first;
};

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

// The lines as a batch text.
std::string batchText(const std::vector<std::string>& lines);

} // namespace corvel

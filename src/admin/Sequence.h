#pragma once

#include "common/Command.h"
#include "common/ports/Views.h"

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

// The lines as a batch text.
std::string batchText(const std::vector<std::string>& lines);

} // namespace corvel

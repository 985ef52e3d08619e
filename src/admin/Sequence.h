#pragma once

#include "common/Command.h"
#include "common/ports/Views.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// Commands that run one after the other. Whoever starts it writes sBegin to the log beginLog, puts
// sBatchLines (each line ended by CR LF) into the session's and queues first.
struct CommandSequence {
    std::string sBegin;
    LogKind beginLog = LogKind::console;
    std::string sBatchLines;
    Command first;
};

// The lines as a batch text.
std::string batchText(const std::vector<std::string>& lines);

// What starting a sequence says while another one runs on the site.
inline constexpr std::string_view sequenceRunning =
    "Another sequence of commands is still running on this site.";

// Whether a queued or outstanding command of this handler belongs to a sequence.
constexpr bool isSequenceHandler(std::int32_t code) {
    return code == handler::addUser || code == handler::addGroup || code == handler::batch;
}

} // namespace corvel

#pragma once

#include "net/CommandChannel.h"

#include <span>

namespace corvel {

// The table of every reply kind: code, echo, and what is done with the answer. A new kind is one entry here
// and one parser.
std::span<const ReplyHandler> replyHandlers();

} // namespace corvel

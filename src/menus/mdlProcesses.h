#pragma once

#include "common/Ports.h"

#include <string_view>

namespace corvel {

// The first running process whose program file's path, lower-cased, matches pattern as common/Text has it;
// 0 when there is none. pattern: UTF-8, lower-cased as foldCase does. Processes whose program cannot be seen
// are passed over.
ProcessId FindProcessByPath(std::string_view pattern);

// Ends a process: on Windows at once, on Linux by asking it to end (SIGTERM). Whether that was allowed. The
// id 0 is no process.
bool KillProcess(ProcessId id);

} // namespace corvel

#include "menus/mdlProcesses.h"

#include "common/Text.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <limits>
#include <string>
#include <sys/types.h>
#include <system_error>
#include <vector>

namespace corvel {

namespace {

// The process of a directory in /proc, 0 where it is something else's.
ProcessId processOf(const std::filesystem::path& directory) {
    const std::string name = directory.filename().string();
    ProcessId id = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), id);
    return error == std::errc() && end == name.data() + name.size() ? id : 0;
}

std::vector<ProcessId> runningProcesses() {
    std::vector<ProcessId> processes;
    std::error_code error;
    std::filesystem::directory_iterator entry("/proc", error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (const ProcessId id = processOf(entry->path()); id != 0) {
            processes.push_back(id);
        }
    }
    std::ranges::sort(processes);
    return processes;
}

// The path of the file that the process runs; empty where this user may not see it, as for other users'
// processes, and where there is none, as for those of the kernel.
std::string programPath(ProcessId id) {
    constexpr std::string_view replaced =
        " (deleted)"; // what the kernel adds when the file has been replaced
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/" + std::to_string(id) + "/exe", error).string();
    if (path.ends_with(replaced)) {
        path.resize(path.size() - replaced.size());
    }
    return path;
}

} // namespace

ProcessId FindProcessByPath(std::string_view pattern) {
    for (const ProcessId id : runningProcesses()) {
        const std::string path = programPath(id);
        if (!path.empty() && matchesPattern(foldCase(path), pattern)) {
            return id;
        }
    }
    return 0;
}

bool KillProcess(ProcessId id) {
    // 0 and negative numbers would mean whole groups of processes.
    return id > 0 && id <= static_cast<ProcessId>(std::numeric_limits<pid_t>::max()) &&
           ::kill(static_cast<pid_t>(id), SIGTERM) == 0;
}

} // namespace corvel

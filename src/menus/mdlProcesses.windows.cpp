// The process functions as kernel32 has them, so that nothing else is to be linked.
#define PSAPI_VERSION 2

#include "menus/mdlProcesses.h"

#include "common/Text.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>
#include <windows.h>

#include <psapi.h>

namespace corvel {

namespace {

constexpr DWORD queryAccess = PROCESS_QUERY_INFORMATION | PROCESS_VM_READ;
constexpr DWORD allAccess = 0x1F0FFF;

// An open process, or none. Closed with the object.
class OpenedProcess {
  public:
    OpenedProcess(DWORD access, DWORD id) : handle_(OpenProcess(access, FALSE, id)) {}
    ~OpenedProcess() {
        if (handle_ != nullptr) {
            CloseHandle(handle_);
        }
    }
    OpenedProcess(const OpenedProcess&) = delete;
    OpenedProcess& operator=(const OpenedProcess&) = delete;

    HANDLE handle() const { return handle_; }

  private:
    HANDLE handle_;
};

std::vector<DWORD> runningProcesses() {
    std::vector<DWORD> processes(1024);
    for (;;) {
        const auto room = static_cast<DWORD>(processes.size() * sizeof(DWORD));
        DWORD used = 0;
        if (EnumProcesses(processes.data(), room, &used) == 0) {
            return {};
        }
        if (used < room) {
            processes.resize(used / sizeof(DWORD));
            return processes;
        }
        processes.resize(processes.size() * 2);
    }
}

// The path of the process's first module, its program; empty where this user may not see it.
std::string programPath(DWORD id) {
    constexpr std::size_t longestPath = 32768;
    const OpenedProcess process(queryAccess, id);
    HMODULE module = nullptr;
    DWORD used = 0;
    if (process.handle() == nullptr ||
        EnumProcessModules(process.handle(), &module, sizeof module, &used) == 0 || used == 0) {
        return {};
    }
    std::wstring path(longestPath, L'\0');
    const DWORD length =
        GetModuleFileNameExW(process.handle(), module, path.data(), static_cast<DWORD>(path.size()));
    path.resize(length);
    const std::u8string text = std::filesystem::path(path).u8string();
    return {text.begin(), text.end()};
}

} // namespace

ProcessId FindProcessByPath(std::string_view pattern) {
    for (const DWORD id : runningProcesses()) {
        const std::string path = id == 0 ? std::string() : programPath(id);
        if (!path.empty() && matchesPattern(foldCase(path), pattern)) {
            return id;
        }
    }
    return 0;
}

bool KillProcess(ProcessId id) {
    const OpenedProcess process(allAccess, id);
    return id != 0 && process.handle() != nullptr && TerminateProcess(process.handle(), 0) != 0;
}

} // namespace corvel

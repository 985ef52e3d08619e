#include "ui/ParentConsole.h"

#include <cstdio>
#include <windows.h>

namespace corvel {

namespace {

bool leadsSomewhere(DWORD handle) {
    return GetFileType(GetStdHandle(handle)) != FILE_TYPE_UNKNOWN;
}

} // namespace

void joinParentConsole() {
    // What leads to a file or a pipe stays as it is.
    const bool hasOutput = leadsSomewhere(STD_OUTPUT_HANDLE);
    const bool hasErrors = leadsSomewhere(STD_ERROR_HANDLE);
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) {
        return;
    }
    if (!hasOutput) {
        std::freopen("CONOUT$", "w", stdout);
    }
    if (!hasErrors) {
        std::freopen("CONOUT$", "w", stderr);
    }
}

void leaveParentConsole() {
    FreeConsole();
}

} // namespace corvel

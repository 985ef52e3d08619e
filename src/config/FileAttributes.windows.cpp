#include "config/FileAttributes.h"

#include <windows.h>

namespace corvel {

const std::string_view platformLineEnd = "\r\n";

namespace {

std::error_code lastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

std::error_code writeAll(HANDLE file, std::string_view bytes) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(bytes.size());
    if (!WriteFile(file, bytes.data(), size, &written, nullptr) || !FlushFileBuffers(file)) {
        return lastError();
    }
    return {};
}

} // namespace

void clearAttributes(const std::filesystem::path& path) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

// A new file inherits from its directory who may read it.
std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return lastError();
    }
    const std::error_code error = writeAll(file, bytes);
    CloseHandle(file);
    return error;
}

} // namespace corvel

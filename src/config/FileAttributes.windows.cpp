#include "config/FileAttributes.h"

#include <algorithm>
#include <array>
#include <windows.h>

#include <sddl.h>

namespace corvel {

const std::string_view platformLineEnd = "\r\n";

namespace {

std::error_code lastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

std::error_code writeAll(HANDLE file, std::string_view bytes) {
    constexpr std::size_t largestPiece = 1U << 20U;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), largestPiece));
        if (WriteFile(file, bytes.data(), size, &written, nullptr) == 0) {
            return lastError();
        }
        bytes.remove_prefix(written);
    }
    return FlushFileBuffers(file) != 0 ? std::error_code() : lastError();
}

} // namespace

void clearAttributes(const std::filesystem::path& path) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes) {
    // Full access for the owner, nothing inherited from the directory.
    PSECURITY_DESCRIPTOR ownerAlone = nullptr;
    if (ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)", SDDL_REVISION_1, &ownerAlone,
                                                             nullptr) == 0) {
        return lastError();
    }
    SECURITY_ATTRIBUTES attributes{};
    attributes.nLength = sizeof attributes;
    attributes.lpSecurityDescriptor = ownerAlone;
    DeleteFileW(path.c_str());
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, &attributes, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    std::error_code error = file == INVALID_HANDLE_VALUE ? lastError() : std::error_code();
    LocalFree(ownerAlone);
    if (!error) {
        error = writeAll(file, bytes);
        if (CloseHandle(file) == 0 && !error) {
            error = lastError();
        }
    }
    return error;
}

// The standard library asks for the text in the code page, which need not have the letters of its language.
std::string errorText(const std::error_code& error) {
    if (error.category() != std::system_category()) {
        return error.message();
    }
    std::array<wchar_t, 512> text{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        static_cast<DWORD>(error.value()), 0, text.data(),
                                        static_cast<DWORD>(text.size()), nullptr);
    std::wstring_view message(text.data(), length);
    message = message.substr(0, message.find_last_not_of(L"\r\n ") + 1);
    if (message.empty()) {
        return error.message();
    }
    const std::u8string bytes = std::filesystem::path(message).u8string();
    return {bytes.begin(), bytes.end()};
}

} // namespace corvel

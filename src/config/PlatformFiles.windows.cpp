#include "config/PlatformFiles.h"

#include <algorithm>
#include <array>
#include <windows.h>

#include <sddl.h>

namespace corvel {

const std::string_view platformLineEnd = "\r\n";

namespace {

std::error_code lastError() {
    const DWORD error = GetLastError();
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return std::make_error_code(std::errc::no_such_file_or_directory);
    case ERROR_FILE_EXISTS:
        return std::make_error_code(std::errc::file_exists);
    default:
        return {static_cast<int>(error), std::system_category()};
    }
}

std::error_code writeAll(HANDLE file, std::string_view bytes, Waiting waits) {
    constexpr std::size_t largestPiece = 1U << 20U;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), largestPiece));
        if (WriteFile(file, bytes.data(), size, &written, nullptr) == 0) {
            return lastError();
        }
        bytes.remove_prefix(written);
    }
    return waits == Waiting::forNothing || FlushFileBuffers(file) != 0 ? std::error_code() : lastError();
}

} // namespace

void clearAttributes(const std::filesystem::path& path) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

std::error_code readBytes(const std::filesystem::path& path, std::string& bytes) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return lastError();
    }
    std::error_code error;
    std::array<char, 16384> piece{};
    DWORD count = 0;
    do {
        if (ReadFile(file, piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr) == 0) {
            error = lastError();
            break;
        }
        bytes.append(piece.data(), count);
    } while (count > 0);
    CloseHandle(file);
    return error;
}

std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes, Waiting waits) {
    // Full access for the owner, nothing inherited from the directory.
    PSECURITY_DESCRIPTOR ownerAlone = nullptr;
    if (ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)", SDDL_REVISION_1, &ownerAlone,
                                                             nullptr) == 0) {
        return lastError();
    }
    SECURITY_ATTRIBUTES attributes{};
    attributes.nLength = sizeof attributes;
    attributes.lpSecurityDescriptor = ownerAlone;
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, &attributes, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    std::error_code error = file == INVALID_HANDLE_VALUE ? lastError() : std::error_code();
    LocalFree(ownerAlone);
    if (file == INVALID_HANDLE_VALUE) {
        return error;
    }
    error = writeAll(file, bytes, waits);
    if (CloseHandle(file) == 0 && !error) {
        error = lastError();
    }
    if (error) {
        DeleteFileW(path.c_str());
    }
    return error;
}

bool isReadableByOthers(const std::filesystem::path& /*path*/) {
    return false;
}

std::error_code makePrivate(const std::filesystem::path& /*path*/) {
    return {};
}

std::error_code moveFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    const bool isMoved =
        MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    return isMoved ? std::error_code() : lastError();
}

// The move has waited already.
std::error_code syncDirectory(const std::filesystem::path& /*directory*/) {
    return {};
}

std::string utf8FromSystem(std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    std::wstring wide(bytes.size(), L'\0'); // no byte becomes more than one unit
    wide.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, wide.data(), length)));
    const std::u8string text = std::filesystem::path(wide).u8string();
    return {text.begin(), text.end()};
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

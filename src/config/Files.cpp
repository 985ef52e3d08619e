#include "config/Files.h"

#include "config/FileAttributes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <system_error>

namespace corvel {

namespace {

std::filesystem::path pathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

} // namespace

std::string BuildAppPath(std::string_view fileName, std::string_view directory,
                         std::string_view applicationDirectory) {
    constexpr char separator = static_cast<char>(std::filesystem::path::preferred_separator);
    std::string path(directory == "*" ? applicationDirectory : directory);
    if (!path.ends_with(separator)) {
        path += separator;
    }
    return path += fileName;
}

bool FileExists(const std::string& path) {
    return GetFileLength(path) >= 0 && !IsDirectory(path);
}

bool IsDirectory(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(pathOf(path), error);
}

std::int32_t GetFileLength(const std::string& path) {
    std::error_code error;
    const std::uintmax_t length = std::filesystem::file_size(pathOf(path), error);
    constexpr std::uintmax_t most = std::numeric_limits<std::int32_t>::max();
    return error ? -1 : static_cast<std::int32_t>(std::min(length, most));
}

bool DeleteFileForce(const std::string& path) {
    if (!FileExists(path)) {
        return false;
    }
    clearAttributes(pathOf(path));
    std::error_code error;
    return std::filesystem::remove(pathOf(path), error);
}

std::vector<std::string> ReadAllLines(const std::string& path) {
    std::vector<std::string> lines;
    if (FileExists(path)) {
        std::ifstream file(pathOf(path), std::ios::binary);
        for (std::string line; std::getline(file, line);) {
            if (line.ends_with('\r')) {
                line.pop_back();
            }
            lines.push_back(line);
        }
    }
    if (lines.empty()) {
        lines.emplace_back();
    }
    return lines;
}

} // namespace corvel

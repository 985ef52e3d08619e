#include "config/Files.h"

#include "config/FileAttributes.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <system_error>

namespace corvel {

namespace {

constexpr char separator = static_cast<char>(std::filesystem::path::preferred_separator);
constexpr std::string_view separators = separator == '/' ? "/" : "\\/";

} // namespace

std::filesystem::path filePath(std::string_view path) {
    if (path.find('\0') != std::string_view::npos) {
        return {}; // the system would stop there and ask for another file
    }
    try {
        return {std::u8string(path.begin(), path.end())};
    } catch (const std::system_error&) {
        return {};
    }
}

std::string BuildAppPath(std::string_view fileName, std::string_view directory,
                         std::string_view applicationDirectory) {
    std::string path(directory == "*" ? applicationDirectory : directory);
    if (path.empty() || separators.find(path.back()) == std::string_view::npos) {
        path += separator;
    }
    return path.append(fileName);
}

bool FileExists(std::string_view path) {
    return GetFileLength(path) >= 0 && !IsDirectory(path);
}

bool IsDirectory(std::string_view path) {
    std::error_code error;
    return std::filesystem::is_directory(filePath(path), error);
}

std::int32_t GetFileLength(std::string_view path) {
    std::error_code error;
    const std::uintmax_t length = std::filesystem::file_size(filePath(path), error);
    constexpr std::uintmax_t longest = std::numeric_limits<std::int32_t>::max();
    return error ? -1 : static_cast<std::int32_t>(std::min(length, longest));
}

bool DeleteFileForce(std::string_view path) {
    if (!FileExists(path)) {
        return false;
    }
    const std::filesystem::path file = filePath(path);
    clearAttributes(file);
    std::error_code error;
    return std::filesystem::remove(file, error);
}

std::optional<std::vector<std::string>> readLines(std::string_view path) {
    std::vector<std::string> lines;
    if (FileExists(path)) {
        std::ifstream file(filePath(path), std::ios::binary); // binary: line ends are the same everywhere
        if (!file.is_open()) {
            return std::nullopt;
        }
        for (std::string line; std::getline(file, line);) {
            if (line.ends_with('\r')) {
                line.pop_back();
            }
            lines.push_back(line);
        }
        if (file.bad()) {
            return std::nullopt;
        }
    }
    if (lines.empty()) {
        lines.emplace_back();
    }
    return lines;
}

std::vector<std::string> ReadAllLines(std::string_view path) {
    return readLines(path).value_or(std::vector<std::string>(1));
}

} // namespace corvel

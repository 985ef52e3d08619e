#include "config/Files.h"

#include "common/Text.h"
#include "config/PlatformFiles.h"

#include <algorithm>
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

std::string BuildAppPath(std::string_view fileName, std::string_view directory) {
    std::string path(directory);
    if (path.empty() || separators.find(path.back()) == std::string_view::npos) {
        path += separator;
    }
    return path.append(fileName);
}

bool FileExists(std::string_view path) {
    return GetFileLength(path) >= 0; // which no directory has
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

FileContent readFile(std::string_view path) {
    FileContent content;
    const std::error_code error = readBytes(filePath(path), content.bytes);
    if (!error) {
        content.state = FileContent::State::known;
    } else if (error != std::errc::no_such_file_or_directory) {
        content = {.state = FileContent::State::unknown, .bytes = {}, .reason = errorText(error)};
    }
    return content;
}

std::vector<std::string> linesOf(std::string_view bytes) {
    std::vector<std::string> lines;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        lines.emplace_back(line);
    }
    if (lines.empty()) {
        lines.emplace_back();
    }
    return lines;
}

std::optional<EntryLine> parseEntryLine(std::string_view line, Comments comments) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (line.starts_with(byteOrderMark)) {
        line.remove_prefix(byteOrderMark.size());
    }
    if (comments == Comments::semicolonAndHash) {
        line = trimLeading(line);
        if (line.starts_with(';') || line.starts_with('#')) {
            return std::nullopt;
        }
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return std::nullopt;
    }
    return EntryLine{.key = toLower(trim(line.substr(0, equals))),
                     .value = std::string(trim(line.substr(equals + 1)))};
}

} // namespace corvel

#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// All paths are UTF-8 (on Linux: whatever bytes the file system has). None of these functions throws for a
// path that cannot be asked for.

// path for the file system; empty for one that it cannot hold: with a NUL in it, or not in its character set.
std::filesystem::path filePath(std::string_view path);

// fileName in directory, with one separator of the platform between them.
std::string BuildAppPath(std::string_view fileName, std::string_view directory);

// Whether path names an existing file, not a directory, whose length can be read.
bool FileExists(std::string_view path);

// The file's length in bytes, -1 when it cannot be obtained. A file longer than 32 bits can tell counts as
// the longest that they can.
std::int32_t GetFileLength(std::string_view path);

// Removes an existing file, a read-only, hidden or system one too. True exactly when it was removed.
bool DeleteFileForce(std::string_view path);

// What stands in a file. A missing file, one with nothing in it and one that cannot be asked are three
// things.
struct FileContent {
    enum class State { missing, unknown, known };

    State state = State::missing;
    std::string bytes;  // of a known file
    std::string reason; // why a file is unknown, for a person

    bool operator==(const FileContent&) const = default;
};

// Reads a file to its end.
FileContent readFile(std::string_view path);

// bytes cut into lines, without the line ends (CR LF or LF): N lines give N elements, no line one empty one.
std::vector<std::string> linesOf(std::string_view bytes);

// One line "key = value" of a configuration file.
struct EntryLine {
    std::string key;   // lower-case, without blanks around it
    std::string value; // without blanks around it; keeps its case and any further "="

    bool operator==(const EntryLine&) const = default;
};

// Whether a line whose first non-blank character is ";" or "#" is a comment. Only settings.ini has comments.
enum class Comments { none, semicolonAndHash };

// The entry on a line (without its line end, in the bytes of the file); nothing for a line without "=" and
// for a comment. A byte order mark in front of the line, as some editors put it at the start of a file, is
// passed over.
std::optional<EntryLine> parseEntryLine(std::string_view line, Comments comments);

} // namespace corvel

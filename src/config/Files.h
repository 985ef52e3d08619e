#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// All paths are UTF-8.

// fileName in directory, with one separator of the platform between them; directory "*" stands for
// applicationDirectory.
std::string BuildAppPath(std::string_view fileName, std::string_view directory,
                         std::string_view applicationDirectory);

// Whether path names an existing file, not a directory, whose length can be read. Never fails.
bool FileExists(const std::string& path);

// Whether path names an existing directory. Never fails.
bool IsDirectory(const std::string& path);

// The file's length in bytes, -1 when it cannot be obtained. Longer than 32 bits tell is the largest they
// can.
std::int32_t GetFileLength(const std::string& path);

// Removes an existing file, a read-only, hidden or system one too. True exactly when it was removed.
bool DeleteFileForce(const std::string& path);

// The lines of a text file without their ends (CR LF or LF). A missing or an empty file is one empty line.
std::vector<std::string> ReadAllLines(const std::string& path);

} // namespace corvel

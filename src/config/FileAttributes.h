#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace corvel {

// What platforms do differently with files.

// What ends a line of a text file.
extern const std::string_view platformLineEnd;

// Takes away whatever keeps a file from being removed: read-only, hidden, system. Reports nothing: the
// removal does.
void clearAttributes(const std::filesystem::path& path);

// Writes a new file, readable and writable by its owner alone, and waits until it is on the disk; a file of
// that name is replaced. The error is empty when all of it was written.
std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes);

} // namespace corvel

#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace corvel {

// What the platforms do differently with files. One file per platform implements it.

// What ends a line of a text file.
extern const std::string_view platformLineEnd;

// Takes away what keeps a file from being removed: read-only, hidden and system. Reports nothing; the removal
// that follows does.
void clearAttributes(const std::filesystem::path& path);

// Writes bytes to a new file that from its creation on its owner alone can read, and waits until they are on
// the disk. A file or link of that name is removed first, never written through. Returns an empty error when
// every byte was written; after any other a part of the file may be left.
std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes);

// What error means, for a person: in the system's words and, where those are in UTF-8 or UTF-16, in UTF-8.
std::string errorText(const std::error_code& error);

} // namespace corvel

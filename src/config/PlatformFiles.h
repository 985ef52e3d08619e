#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace corvel {

// What the platforms do differently with files. One file per platform implements it. An empty error stands
// for success.

// What ends a line of a text file.
extern const std::string_view platformLineEnd;

// Takes away what keeps a file from being removed: read-only, hidden and system. Reports nothing; the removal
// that follows does.
void clearAttributes(const std::filesystem::path& path);

// Appends the bytes of a file to bytes. A missing file gives std::errc::no_such_file_or_directory; what is no
// file, such as a directory or a pipe, another error.
std::error_code readBytes(const std::filesystem::path& path, std::string& bytes);

// Whether a writer waits until what it wrote is on the disk, where the loss of power does not reach it.
enum class Waiting { forDisk, forNothing };

// Writes bytes to a new file that from its creation on its owner alone can read. What is there already stays,
// with std::errc::file_exists; after any other error no file is left.
std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes, Waiting waits);

// Whether others than its owner may read a file, and taking that right from them. On Windows a file has the
// rights of its folder, so nobody is named there.
bool isReadableByOthers(const std::filesystem::path& path);
std::error_code makePrivate(const std::filesystem::path& path);

// Renames a file, over one that may be at to, in one step that no crash divides.
std::error_code moveFile(const std::filesystem::path& from, const std::filesystem::path& to);

// Waits until the names in a directory are on the disk.
std::error_code syncDirectory(const std::filesystem::path& directory);

// bytes of a text in the character set that the system gives to programs which know no other, as UTF-8. On
// Linux, where files of that kind come from Windows: Windows-1252.
std::string utf8FromSystem(std::string_view bytes);

// What error means, for a person: in the system's words and, where those are in UTF-8 or UTF-16, in UTF-8.
std::string errorText(const std::error_code& error);

} // namespace corvel

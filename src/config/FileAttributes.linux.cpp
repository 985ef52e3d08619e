#include "config/FileAttributes.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvel {

const std::string_view platformLineEnd = "\n";

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::error_code writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0) {
            return lastError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return ::fsync(file) == 0 ? std::error_code() : lastError();
}

} // namespace

// Whether a file can be removed is up to its directory.
void clearAttributes(const std::filesystem::path& path) {
    ::chmod(path.c_str(), S_IRUSR | S_IWUSR);
}

std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes) {
    ::unlink(path.c_str()); // a leftover may be readable by others
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0) {
        return lastError();
    }
    const std::error_code error = writeAll(file, bytes);
    const int closed = ::close(file);
    return error || closed == 0 ? error : lastError();
}

} // namespace corvel

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
        if (written < 0 && errno != EINTR) {
            return lastError();
        }
        bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return ::fsync(file) == 0 ? std::error_code() : lastError();
}

} // namespace

// Here the directory alone decides whether a file can be removed, and nothing is hidden or reserved.
void clearAttributes(const std::filesystem::path& path) {
    std::error_code ignored;
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add, ignored);
}

std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes) {
    ::unlink(path.c_str());
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0) {
        return lastError();
    }
    const std::error_code error = writeAll(file, bytes);
    const bool isClosed = ::close(file) == 0;
    return error || isClosed ? error : lastError();
}

std::string errorText(const std::error_code& error) {
    return error.message();
}

} // namespace corvel

#include "config/PlatformFiles.h"

#include "common/TextEncoding.h"

#include <array>
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

std::error_code readAll(int file, std::string& bytes) {
    struct stat status = {};
    if (::fstat(file, &status) != 0) {
        return lastError();
    }
    if (!S_ISREG(status.st_mode)) {
        return std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                            : std::errc::not_supported);
    }
    std::array<char, 16384> piece{};
    for (;;) {
        const ssize_t count = ::read(file, piece.data(), piece.size());
        if (count == 0) {
            return {};
        }
        if (count > 0) {
            bytes.append(piece.data(), static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return lastError();
        }
    }
}

std::error_code writeAll(int file, std::string_view bytes, Waiting waits) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return lastError();
        }
        bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return waits == Waiting::forNothing || ::fsync(file) == 0 ? std::error_code() : lastError();
}

} // namespace

// Here the directory alone decides whether a file can be removed, and nothing is hidden or reserved.
void clearAttributes(const std::filesystem::path& path) {
    std::error_code ignored;
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add, ignored);
}

std::error_code readBytes(const std::filesystem::path& path, std::string& bytes) {
    const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // a pipe is not waited for
    if (file < 0) {
        return lastError();
    }
    const std::error_code error = readAll(file, bytes);
    ::close(file);
    return error;
}

std::error_code writePrivateFile(const std::filesystem::path& path, std::string_view bytes, Waiting waits) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0) {
        return lastError();
    }
    std::error_code error = writeAll(file, bytes, waits);
    if (::close(file) != 0 && !error) {
        error = lastError();
    }
    if (error) {
        ::unlink(path.c_str());
    }
    return error;
}

bool isReadableByOthers(const std::filesystem::path& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && (status.st_mode & (S_IRGRP | S_IROTH)) != 0;
}

std::error_code makePrivate(const std::filesystem::path& path) {
    return ::chmod(path.c_str(), S_IRUSR | S_IWUSR) == 0 ? std::error_code() : lastError();
}

std::error_code moveFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    return ::rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : lastError();
}

// Some file systems of networks know no such thing.
std::error_code syncDirectory(const std::filesystem::path& directory) {
    const int file = ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0) {
        return errno == EACCES ? std::error_code() : lastError(); // one may write where one may not read
    }
    const std::error_code error = ::fsync(file) == 0 || errno == EINVAL ? std::error_code() : lastError();
    ::close(file);
    return error;
}

std::string utf8FromSystem(std::string_view bytes) {
    return fromWindows1252(bytes);
}

std::string errorText(const std::error_code& error) {
    return error.message();
}

} // namespace corvel

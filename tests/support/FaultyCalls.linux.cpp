#include "support/FaultyCalls.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace corvel::test {

namespace {

const Fault* armed = nullptr;
int calls = 0;
int readError = 0;

enum class Step { work, fail, cut };

Step nextStep(bool needsRoom) {
    if (armed == nullptr) {
        return Step::work;
    }
    ++calls;
    const bool isLasting = armed->kind == Fault::Kind::lasting && calls > armed->at && needsRoom;
    if (calls != armed->at && !isLasting) {
        return Step::work;
    }
    if (armed->kind == Fault::Kind::kill) {
        kill(getpid(), SIGKILL);
    }
    errno = armed->error;
    return armed->kind == Fault::Kind::cut ? Step::cut : Step::fail;
}

} // namespace

int withFault(const Fault& fault, const std::function<void()>& work) {
    calls = 0;
    armed = &fault;
    work();
    armed = nullptr;
    return calls;
}

void withUnreadableFiles(int error, const std::function<void()>& work) {
    readError = error;
    work();
    readError = 0;
}

} // namespace corvel::test

using namespace corvel::test;

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    if ((flags & O_CREAT) != 0 && nextStep(true) == Step::fail) {
        return -1;
    }
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

ssize_t read(int file, void* bytes, size_t size) {
    errno = readError != 0 ? readError : errno;
    return readError != 0 ? -1 : syscall(SYS_read, file, bytes, size);
}

ssize_t write(int file, const void* bytes, size_t size) {
    const Step step = nextStep(true);
    if (step == Step::work || size < 2) {
        return step == Step::fail ? -1 : syscall(SYS_write, file, bytes, size);
    }
    const int error = errno;
    const ssize_t written = syscall(SYS_write, file, bytes, size_t{1});
    errno = error;
    return step == Step::fail ? -1 : written;
}

int fsync(int file) {
    return nextStep(true) == Step::fail ? -1 : static_cast<int>(syscall(SYS_fsync, file));
}

int close(int file) {
    const Step step = nextStep(false);
    const int error = errno;
    const int closed = static_cast<int>(syscall(SYS_close, file)); // as after a failed close, too
    errno = step == Step::fail ? error : errno;
    return step == Step::fail ? -1 : closed;
}

int link(const char* from, const char* to) {
    return nextStep(true) == Step::fail ? -1 : static_cast<int>(syscall(SYS_link, from, to));
}

int rename(const char* from, const char* to) {
    return nextStep(true) == Step::fail ? -1 : static_cast<int>(syscall(SYS_rename, from, to));
}
}

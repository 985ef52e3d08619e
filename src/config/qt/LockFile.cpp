#include "config/qt/LockFile.h"

#include "config/Files.h"
#include "widgets/TextConversion.h"

namespace corvel {

LockFile::LockFile(const std::string& directory)
    : file_(fromCore(BuildAppPath("corvel.lock", "*", directory))) {
    file_.setStaleLockTime(0); // age alone says nothing: a program may run for weeks
}

bool LockFile::take() {
    return file_.isLocked() || file_.tryLock(0) || file_.error() != QLockFile::LockFailedError;
}

} // namespace corvel

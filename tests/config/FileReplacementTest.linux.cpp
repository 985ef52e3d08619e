#include "config/FileReplacement.h"

#include "config/Files.h"
#include "config/Sites.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// What the calls of the system below do instead of their work; they stand before those of the C library.
struct Faults {
    std::optional<int> read;
    std::optional<int> write; // after the first bytes
    std::optional<int> fsync;
    bool isShort = false; // one byte goes into the file with every call
};
Faults faults;

} // namespace

extern "C" {

ssize_t read(int file, void* bytes, size_t size) {
    errno = faults.read.value_or(errno);
    return faults.read ? -1 : syscall(SYS_read, file, bytes, size);
}

ssize_t write(int file, const void* bytes, size_t size) {
    const bool isFirst = lseek(file, 0, SEEK_CUR) == 0;
    errno = faults.write && !isFirst ? *faults.write : errno;
    return faults.write && !isFirst
               ? -1
               : syscall(SYS_write, file, bytes,
                         (faults.write || faults.isShort) && size > 1 ? size_t{1} : size);
}

int fsync(int file) {
    errno = faults.fsync.value_or(errno);
    return faults.fsync ? -1 : static_cast<int>(syscall(SYS_fsync, file));
}
}

namespace corvel::test {
namespace {

class FaultyDisk : public testing::Test {
  protected:
    ~FaultyDisk() override { faults = {}; }

    SaveResult replace(Faults wanted) {
        faults = wanted;
        const SaveResult result = replaceFile(path, "new text\n");
        faults = {};
        return result;
    }

    std::size_t fileCount() const {
        const std::filesystem::directory_iterator files(filePath(directory.path()));
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("sites.ini");
};

TEST_F(FaultyDisk, CostsNeitherTextNorSilence) {
    directory.write("sites.ini", "old text\n");
    for (const Faults& wanted : {Faults{.write = ENOSPC}, Faults{.write = EIO}, Faults{.fsync = EIO}}) {
        const SaveResult result = replace(wanted);
        EXPECT_EQ(result.outcome, SaveResult::Outcome::failed);
        EXPECT_EQ(result.reason,
                  std::generic_category().message(wanted.write.value_or(wanted.fsync.value_or(0))));
        EXPECT_EQ(directory.read("sites.ini"), "old text\n");
        EXPECT_EQ(fileCount(), 1U) << "nothing half written stays, with passwords in it";
    }
    EXPECT_EQ(replace({.isShort = true}).outcome, SaveResult::Outcome::saved);
    EXPECT_EQ(directory.read("sites.ini"), "new text\n");
    faults = {.write = ENOSPC};
    const KeptText kept = keepBeside(path, "mine", "now");
    faults = {};
    EXPECT_EQ(kept.path, "");
    EXPECT_FALSE(kept.reason.empty());
}

TEST_F(FaultyDisk, IsNotTakenForAnEmptyFile) {
    directory.write("sites.ini", "name = a\n");
    for (const int error : {EIO, ESTALE}) {
        faults = {.read = error};
        const FileContent content = readFile(path);
        faults = {};
        EXPECT_EQ(content.state, FileContent::State::unknown);
        EXPECT_EQ(content.reason, std::generic_category().message(error));
    }
}

TEST(FileReplacement, IsItsOwnersAlone) {
    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("sites.ini");
    EXPECT_EQ(replaceFile(path, "name = a\n").outcome, SaveResult::Outcome::saved);
    for (const std::string& file : {path, keepBeside(path, "mine", "now").path}) {
        EXPECT_EQ(std::filesystem::status(file).permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    }
}

// Nobody but the superuser is kept out by permissions, so this runs as nobody in a process of its own.
void becomeOrdinaryUser() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && setuid(nobody) != 0) {
        std::_Exit(2);
    }
}

TEST(FileReplacementDeathTest, SaysWhatItMayNotDo) {
    const TemporaryDirectory directory;
    directory.write("sites.ini", "old text\n");
    const std::string path = directory.fileNamed("sites.ini");
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0555));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    EXPECT_EXIT(
        {
            becomeOrdinaryUser();
            std::_Exit(replaceFile(path, "new text\n").outcome == SaveResult::Outcome::locked &&
                               readFile(path).state == FileContent::State::unknown
                           ? 0
                           : 1);
        },
        testing::ExitedWithCode(0), "");
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(path, std::filesystem::perms(0600));
    EXPECT_EQ(directory.read("sites.ini"), "old text\n");
}

TEST(FileReplacement, FollowsASymbolicLink) {
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory.fileNamed("elsewhere"));
    std::filesystem::create_symlink("elsewhere/real.ini", directory.fileNamed("sites.ini"));
    const std::string path = directory.fileNamed("sites.ini");
    for (const char* text : {"name = first\n", "name = second\n"}) {
        EXPECT_EQ(replaceFile(path, text).outcome, SaveResult::Outcome::saved);
        EXPECT_TRUE(std::filesystem::is_symlink(path));
        EXPECT_EQ(directory.read("elsewhere/real.ini"), text);
    }
}

} // namespace
} // namespace corvel::test

#include "config/FileReplacement.h"

#include "config/Files.h"
#include "config/PlatformFiles.h"
#include "support/FaultyCalls.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace corvel::test {
namespace {

TEST(FileReplacement, TakesNoUnreadableFileForAnEmptyOne) {
    const TemporaryDirectory directory;
    directory.write("sites.ini", "name = a\n");
    for (const int error : {EIO, ESTALE}) {
        FileContent content;
        withUnreadableFiles(error, [&] { content = readFile(directory.fileNamed("sites.ini")); });
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
    EXPECT_FALSE(isReadableByOthers(filePath(path)));
    std::filesystem::permissions(filePath(path), std::filesystem::perms(0640));
    EXPECT_TRUE(isReadableByOthers(filePath(path)));
    EXPECT_FALSE(makePrivate(filePath(path)));
    EXPECT_FALSE(isReadableByOthers(filePath(path)));
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

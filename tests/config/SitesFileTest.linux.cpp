#include "config/SitesFile.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace corvel::test {
namespace {

TEST(SitesFile, IsItsOwnersAlone) {
    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("sites.ini");
    EXPECT_EQ(replaceFile(path, "name = a\n").outcome, SaveResult::Outcome::saved);
    EXPECT_EQ(std::filesystem::status(path).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

// Nobody but the superuser is kept out by permissions, so these two steps run as nobody in a process of their
// own.
void becomeOrdinaryUser() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && setuid(nobody) != 0) {
        std::_Exit(2);
    }
}

TEST(SitesFileDeathTest, SaysThatTheOldFileIsLocked) {
    const TemporaryDirectory directory;
    directory.write("sites.ini", "old text\n");
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0555));
    EXPECT_EXIT(
        {
            becomeOrdinaryUser();
            const SaveResult result = replaceFile(directory.fileNamed("sites.ini"), "new text\n");
            std::_Exit(result.outcome == SaveResult::Outcome::locked ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0755));
    EXPECT_EQ(directory.read("sites.ini"), "old text\n");
}

TEST(SitesFileDeathTest, SaysThatTheFileCannotBeRead) {
    const TemporaryDirectory directory;
    directory.write("sites.ini", "name = a\n");
    std::filesystem::permissions(directory.fileNamed("sites.ini"), std::filesystem::perms::none);
    EXPECT_EXIT(
        {
            becomeOrdinaryUser();
            const SitesReading reading = readSites(directory.fileNamed("sites.ini"));
            std::_Exit(reading.isUnreadable && reading.sites.empty() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(SitesFile, FollowsASymbolicLink) {
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

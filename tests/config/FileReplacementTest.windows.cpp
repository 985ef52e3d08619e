#include "config/FileReplacement.h"

#include "config/Files.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

#include <aclapi.h>

namespace corvel::test {
namespace {

// A file as another program holds it: nobody else may read, write or remove it.
class HeldFile {
  public:
    explicit HeldFile(const std::string& path)
        : handle_(CreateFileW(filePath(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~HeldFile() { CloseHandle(handle_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    bool isHeld() const { return handle_ != INVALID_HANDLE_VALUE; }

  private:
    HANDLE handle_;
};

TEST(FileReplacement, IsLockedWhereAnotherProgramHoldsIt) {
    const TemporaryDirectory directory;
    directory.write("sites.ini", "name = old\r\n");
    const std::string path = directory.fileNamed("sites.ini");
    {
        const HeldFile held(path);
        ASSERT_TRUE(held.isHeld());
        EXPECT_EQ(readFile(path).state, FileContent::State::unknown);
        EXPECT_FALSE(DeleteFileForce(path));
        EXPECT_EQ(replaceFile(path, "name = new\r\n").outcome, SaveResult::Outcome::locked);
    }
    EXPECT_EQ(directory.read("sites.ini"), "name = old\r\n");
    EXPECT_EQ(replaceFile(path, "name = new\r\n").outcome, SaveResult::Outcome::saved);
}

TEST(FileReplacement, IsReplacedWhateverItsAttributes) {
    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("sites.ini");
    for (const DWORD attributes : {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM,
                                   FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}) {
        directory.write("sites.ini", "old");
        ASSERT_TRUE(SetFileAttributesW(filePath(path).c_str(), attributes));
        EXPECT_EQ(replaceFile(path, "new").outcome, SaveResult::Outcome::saved) << attributes;
        EXPECT_EQ(directory.read("sites.ini"), "new") << attributes;
    }
}

TEST(FileReplacement, IsItsOwnersAlone) {
    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("sites.ini");
    ASSERT_EQ(replaceFile(path, "name = a\r\n").outcome, SaveResult::Outcome::saved);
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_EQ(GetNamedSecurityInfoW(filePath(path).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                    nullptr, nullptr, &list, nullptr, &descriptor),
              DWORD{ERROR_SUCCESS});
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->AceCount, 1);
    LocalFree(descriptor);
}

} // namespace
} // namespace corvel::test

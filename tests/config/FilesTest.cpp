#include "config/Files.h"

#include "config/FileReplacement.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace corvel::test {
namespace {

TEST(Files, TellsFilesFromDirectoriesAndNothing) {
    const TemporaryDirectory directory;
    directory.write("größe ☃.ini", "12345");
    const std::string file = directory.fileNamed("größe ☃.ini");
    for (const std::string& path :
         {directory.path(), directory.fileNamed(std::string(5000, 'x')), std::string(),
          file + std::string("\0x", 2), directory.fileNamed("\xFF")}) {
        EXPECT_FALSE(FileExists(path)) << path;
        EXPECT_EQ(GetFileLength(path), -1) << path;
        EXPECT_FALSE(DeleteFileForce(path)) << path;
    }
    EXPECT_EQ(GetFileLength(file), 5);
    EXPECT_TRUE(DeleteFileForce(file));
    EXPECT_FALSE(FileExists(file));
}

TEST(Files, ReadsLines) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> rows = {
        {"", {""}},   {"a", {"a"}},           {"a\r\nb\n\nc\n", {"a", "b", "", "c"}},
        {"\n", {""}}, {"a\rb\r\n", {"a\rb"}}, {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
    };
    for (const auto& [text, lines] : rows) {
        EXPECT_EQ(linesOf(text), lines) << text;
    }
}

TEST(FileReplacement, ReplacesTheWholeFileOrNothing) {
    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("sites.ini");
    for (const char* old : {"", "old text\n"}) {
        directory.write("sites.ini", old);
        std::filesystem::permissions(filePath(path), std::filesystem::perms::owner_read);
        EXPECT_EQ(replaceFile(path, "new text\n").outcome, SaveResult::Outcome::saved);
        EXPECT_EQ(directory.read("sites.ini"), "new text\n");
    }
    const SaveResult result = replaceFile(directory.fileNamed("missing/sites.ini"), "new text\n");
    EXPECT_EQ(result.outcome, SaveResult::Outcome::failed);
    EXPECT_FALSE(result.reason.empty());
}

TEST(FileReplacement, KeepsTextsBesideUnderNamesOfTheirOwn) {
    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("f");
    directory.write("f", "theirs");
    const KeptText mine = keepBeside(path, "mine", "1");
    EXPECT_EQ(mine.path, directory.fileNamed("f.other-1"));
    EXPECT_EQ(keepBeside(path, "later", "1").path, directory.fileNamed("f.other-1-2"));
    EXPECT_EQ(putInPlace(mine.path, path, "1").outcome, SaveResult::Outcome::saved);
    EXPECT_EQ(directory.read("f"), "mine");
    EXPECT_EQ(directory.read("f.other-1-2"), "later");
    EXPECT_EQ(directory.read("f.other-1-3"), "theirs");
    EXPECT_FALSE(FileExists(mine.path));

    // What stood there has gone meanwhile.
    DeleteFileForce(path);
    const KeptText again = keepBeside(path, "again", "2");
    EXPECT_EQ(putInPlace(again.path, path, "2").outcome, SaveResult::Outcome::saved);
    EXPECT_EQ(directory.read("f"), "again");
    EXPECT_FALSE(FileExists(directory.fileNamed("f.other-2-2")));

    // And where the kept text has gone, the other one stays.
    EXPECT_EQ(putInPlace(again.path, path, "3").outcome, SaveResult::Outcome::failed);
    EXPECT_EQ(directory.read("f"), "again");
}

TEST(FileReplacement, EndsWhatACrashOfAnEarlierVersionLeft) {
    for (const auto& [old, beside, result] :
         {std::tuple("", "f.part", ""), {"", "f.new", "new"}, {"old", "f.new", "old"}}) {
        const TemporaryDirectory directory;
        directory.write("f", old);
        directory.write(beside, "new");
        finishReplacement(directory.fileNamed("f"));
        EXPECT_EQ(directory.read("f"), result);
    }
}

} // namespace
} // namespace corvel::test

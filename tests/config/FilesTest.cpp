#include "config/Files.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace corvel::test {
namespace {

const std::string separator(1, static_cast<char>(std::filesystem::path::preferred_separator));

TEST(Files, BuildsPaths) {
    EXPECT_EQ(BuildAppPath("f", "*", "app"), "app" + separator + "f");
    EXPECT_EQ(BuildAppPath("f", "*", "app" + separator), "app" + separator + "f");
    EXPECT_EQ(BuildAppPath("f", "dir", "app"), "dir" + separator + "f");
}

TEST(Files, TellsFilesFromDirectoriesAndNothing) {
    const TemporaryDirectory directory;
    directory.write("größe ☃.ini", "12345");
    struct Row {
        const char* name;
        std::string path;
        bool file;
        bool isDirectory;
        std::int32_t length;
    };
    const std::vector<Row> rows = {
        {"directory", directory.path(), false, true, -1},
        {"impossible path", directory.fileNamed(std::string(5000, 'x')), false, false, -1},
        {"empty path", "", false, false, -1},
        {"a NUL does not end the path", directory.fileNamed("größe ☃.ini") + std::string("\0x", 2), false,
         false, -1},
        {"file", directory.fileNamed("größe ☃.ini"), true, false, 5},
        {"bytes that are no UTF-8", directory.fileNamed("\xFF"), false, false, -1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FileExists(row.path), row.file) << row.name;
        EXPECT_EQ(IsDirectory(row.path), row.isDirectory) << row.name;
        EXPECT_EQ(GetFileLength(row.path), row.length) << row.name;
        EXPECT_EQ(DeleteFileForce(row.path), row.file) << row.name;
    }
    EXPECT_FALSE(FileExists(directory.fileNamed("größe ☃.ini")));
    EXPECT_TRUE(IsDirectory(directory.path()));
}

TEST(Files, ReadsLines) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> rows = {
        {"", {""}},
        {"a", {"a"}},
        {"a\n", {"a"}},
        {"a\r\nb\n\nc", {"a", "b", "", "c"}},
        {"\n", {""}},
        {"a\rb\r\n", {"a\rb"}},
        {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
    };
    const TemporaryDirectory directory;
    for (const auto& [text, lines] : rows) {
        directory.write("f", text);
        EXPECT_EQ(ReadAllLines(directory.fileNamed("f")), lines) << text;
    }
    EXPECT_EQ(ReadAllLines(directory.fileNamed("missing")), std::vector<std::string>{""});
}

} // namespace
} // namespace corvel::test

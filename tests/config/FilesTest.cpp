#include "config/Files.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace corvel::test

#pragma once

#include "config/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace corvel::test {

// A directory of the test's own, removed with everything in it at the end. Paths are UTF-8, as in
// config/Files.
class TemporaryDirectory {
  public:
    TemporaryDirectory() {
        // The first name that this process can create. Greek and Chinese: no code page has both, so a path
        // that goes through one is not found again.
        const auto base = std::filesystem::temp_directory_path();
        const std::string name = "corvel-test-Ωμέγα-資料-" +
                                 std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-";
        int counter = 0;
        do {
            path_ = base / filePath(name + std::to_string(counter++));
        } while (!std::filesystem::create_directory(path_));
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string path() const {
        const std::u8string path = path_.u8string();
        return {path.begin(), path.end()};
    }
    std::string fileNamed(const std::string& name) const { return BuildAppPath(name, path()); }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(filePath(fileNamed(name)), std::ios::binary) << bytes;
    }
    void makeDirectory(const std::string& name) const {
        std::filesystem::create_directory(filePath(fileNamed(name)));
    }
    // Empty when there is no such file.
    std::string read(const std::string& name) const {
        std::ifstream file(filePath(fileNamed(name)), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    std::filesystem::path path_;
};

} // namespace corvel::test

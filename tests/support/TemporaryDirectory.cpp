#include "support/TemporaryDirectory.h"

#include "config/Files.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <iterator>

namespace corvel::test {

TemporaryDirectory::TemporaryDirectory() {
    // Unique within the machine: the first name that this process can create.
    static std::atomic<int> counter{0};
    const auto base = std::filesystem::temp_directory_path();
    do {
        // Greek and Chinese: no code page has both, so a path that goes through one is not found again.
        path_ = base / filePath("corvel-test-Ωμέγα-資料-" +
                                std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                                std::to_string(counter++));
    } while (!std::filesystem::create_directory(path_));
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryDirectory::path() const {
    const std::u8string path = path_.u8string();
    return {path.begin(), path.end()};
}

std::string TemporaryDirectory::fileNamed(const std::string& name) const {
    return BuildAppPath(name, path(), {});
}

void TemporaryDirectory::write(const std::string& name, const std::string& bytes) const {
    std::ofstream(filePath(fileNamed(name)), std::ios::binary) << bytes;
}

void TemporaryDirectory::makeDirectory(const std::string& name) const {
    std::filesystem::create_directory(filePath(fileNamed(name)));
}

std::string TemporaryDirectory::read(const std::string& name) const {
    std::ifstream file(filePath(fileNamed(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace corvel::test

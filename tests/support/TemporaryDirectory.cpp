#include "support/TemporaryDirectory.h"

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
        path_ = base / ("corvel-test-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                        "-" + std::to_string(counter++));
    } while (!std::filesystem::create_directory(path_));
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void TemporaryDirectory::write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
}

std::string TemporaryDirectory::read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace corvel::test

#pragma once

#include <filesystem>
#include <string>

namespace corvel::test {

// A directory of the test's own, removed with everything in it at the end. Paths are UTF-8, as in
// config/Files.
class TemporaryDirectory {
  public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string path() const;
    std::string fileNamed(const std::string& name) const;
    void write(const std::string& name, const std::string& bytes) const;
    void makeDirectory(const std::string& name) const;
    std::string read(const std::string& name) const; // empty when there is no such file

  private:
    std::filesystem::path path_;
};

} // namespace corvel::test

#pragma once

#include "common/Ports.h"

#include <QLockFile>

#include <string>

namespace corvel {

// The FolderLock port over the file corvel.lock in the folder. A copy that crashed holds nothing.
class LockFile : public FolderLock {
  public:
    // directory: UTF-8.
    explicit LockFile(const std::string& directory);

    bool take() override;

  private:
    QLockFile file_;
};

} // namespace corvel

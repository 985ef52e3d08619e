#pragma once

#include "support/TemporaryDirectory.h"

#include <string>

namespace corvel::test {

// While it lives, the platform's store for this user is an empty one of the test's own.
class ScratchStore {
  public:
    ScratchStore();
    ~ScratchStore();
    ScratchStore(const ScratchStore&) = delete;
    ScratchStore& operator=(const ScratchStore&) = delete;

    // Whether the platform itself has key in the place where it keeps the program's state.
    bool has(const std::string& key) const;

  private:
    TemporaryDirectory directory_;
};

} // namespace corvel::test

#include "config/qt/LockFile.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <optional>

namespace corvel::test {
namespace {

TEST(LockFile, IsHeldByOneUntilItEnds) {
    const TemporaryDirectory directory;
    std::optional<LockFile> first(directory.path());
    LockFile second(directory.path());
    EXPECT_TRUE(first->take());
    EXPECT_TRUE(first->take());
    EXPECT_FALSE(second.take());
    first.reset();
    EXPECT_TRUE(second.take());
}

TEST(LockFile, DoesNotStandInTheWayWhereNothingCanBeLocked) {
    const TemporaryDirectory directory;
    EXPECT_TRUE(LockFile(directory.fileNamed("missing")).take());
}

} // namespace
} // namespace corvel::test

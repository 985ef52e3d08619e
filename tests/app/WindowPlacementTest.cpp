#include "app/WindowPlacement.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace corvel {
namespace {

TEST(WindowPlacement, BringsAWindowBackWhereItCanBeReached) {
    constexpr int far = std::numeric_limits<int>::max();
    const std::vector<Rectangle> laptop = {{0, 25, 1366, 743}}; // below a panel
    const std::vector<Rectangle> two = {{0, 0, 1920, 1080}, {1920, 100, 1280, 1024}};
    struct Row {
        const char* name;
        std::vector<Rectangle> screens;
        Rectangle stored;
        Rectangle placed;
    };
    const std::vector<Row> rows = {
        {"its title past the right edge", laptop, {1267, 80, 900, 600}, {466, 80, 900, 600}},
        {"its title above the upper edge", laptop, {100, 20, 900, 600}, {100, 55, 900, 600}},
        {"its title below the lower edge", laptop, {100, 768, 900, 600}, {100, 168, 900, 600}},
        {"its second screen is gone", laptop, {2000, 200, 900, 600}, {466, 168, 900, 600}},
        {"below two screens, nearer the second", two, {2400, 1300, 900, 600}, {2300, 524, 900, 600}},
        {"larger and elsewhere", laptop, {4000, 60, 3840, 2160}, {0, 55, 1366, 713}},
        {"numbers at their limits", laptop, {far, far, far, far}, {0, 55, 1366, 713}},
        {"no screen at all", {}, {-5000, 0, 900, 600}, {-5000, 0, 900, 600}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(placedOnScreens(row.stored, row.screens, {.width = 100, .titleHeight = 30}), row.placed)
            << row.name;
    }
}

} // namespace
} // namespace corvel

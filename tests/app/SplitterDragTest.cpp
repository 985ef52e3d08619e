#include "app/WindowPlacement.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

constexpr int barWidth = 75;
constexpr int windowWidth = 12001;

TEST(SplitterDrag, FollowsTheMouseWithinItsBounds) {
    struct Row {
        const char* name;
        double pressedAt;
        double movedTo;
        int listWidth;
        int tabLeft;
    };
    const std::vector<Row> rows = {
        {"to the right", 30, 330, 1799, 1874},
        {"to the left", 30, -270, 1199, 1274},
        {"rounded halves to even", 30, 30.5, 1500, 1575},
        {"past the middle of the window", 30, 9000, 6000, 6075},
        {"out of the window on the left has no effect", 30, -1600, 1500, 1575},
        {"pressed on the bar's very edge is no drag", 0, 300, 1500, 1575},
    };
    for (const Row& row : rows) {
        SplitterLayout layout = splitterPressed(splitterAt(1500, barWidth), row.pressedAt);
        layout = splitterMoved(layout, row.movedTo, barWidth, windowWidth);
        EXPECT_EQ(layout.listWidth, row.listWidth) << row.name;
        EXPECT_EQ(layout.tabLeft, row.tabLeft) << row.name;
        layout = splitterReleased(layout);
        EXPECT_EQ(layout.barLeft, layout.listWidth - 1) << row.name;
        EXPECT_EQ(splitterMoved(layout, 500, barWidth, windowWidth).listWidth, row.listWidth) << row.name;
    }
}

} // namespace
} // namespace corvel

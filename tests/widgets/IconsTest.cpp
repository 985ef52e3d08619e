#include "widgets/Icons.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace corvel {
namespace {

TEST(Icons, EveryPictureIsDrawnAndLikeNoOther) {
    std::vector<QImage> seen = {icon("no such name").pixmap(32, 32).toImage()};
    for (const char* const name : {"corvel",        "directory",      "link",
                                   "file",          "site-connected", "site-disconnected",
                                   "tab-console",   "tab-activity",   "tab-browser",
                                   "tab-stats",     "tab-users",      "tab-groups",
                                   "tab-settings",  "tab-results",    "user-M",
                                   "user-V",        "user-G",         "user-A",
                                   "tray-idle",     "activity-idle",  "activity-up",
                                   "activity-down", "tray-up",        "tray-down",
                                   "tray-both",     "tray-offline"}) {
        QImage blank(32, 32, QImage::Format_ARGB32_Premultiplied);
        blank.fill(Qt::transparent);
        seen.push_back(icon(name).pixmap(32, 32).toImage().convertedTo(blank.format()));
        EXPECT_NE(seen.back(), blank) << name;
        EXPECT_EQ(std::ranges::count(seen, seen.back()), 1) << name;
    }
    EXPECT_TRUE(icon("no such name").isNull());
}

} // namespace
} // namespace corvel

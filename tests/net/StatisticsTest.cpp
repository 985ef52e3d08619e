#include "net/Statistics.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace corvel {
namespace {

const Status online = {
    .hasSites = true,
    .sitename = "home",
    .isOnline = true,
    .activity = {.uploadSpeed = 120, .downloadSpeed = 40, .uploaders = 3, .downloaders = 1, .idlers = 7}};

TEST(Statistics, SumUpWhoIsOnline) {
    std::string rows;
    for (const MenuVariable& row : statisticsRows(online)) {
        rows += row.sName + "=" + row.sValue + ";";
    }
    EXPECT_EQ(rows, "sitename=home;online_all=11;online_transfer=4;online_up=3;online_down=1;online_idle=7;"
                    "bandwidth_total=160;bandwidth_up=120;bandwidth_down=40;");
    EXPECT_EQ(transfersText(online.activity), "3 up 120 kBps · 1 down 40 kBps");
    EXPECT_EQ(transfersText({.idlers = 4}), "");
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(statisticsText({most, most, most, most, most}),
              "Idlers: 2147483647\nUpload: 2147483647 @ 2147483647 kBps \n"
              "Download: 2147483647 @ 2147483647 kBps \nTotal: 6442450941 @ 4294967294 kBps ");
}

TEST(Statistics, FillTheTemplateOfTheState) {
    Status offline = online;
    offline.isOnline = false;
    EXPECT_EQ(statusText({}, "on", ""), "Corvel");
    EXPECT_EQ(statusText(online, "", "off"), "Corvel - home");
    EXPECT_EQ(statusText(offline, "on", ""), "Corvel - home");
    EXPECT_EQ(statusText(offline, "on", "%(sitename) is away"), "home is away");
    EXPECT_EQ(statusText(online, "%(sitename): %(ONLINE_UP,4,R) up", "off"), "home:    3 up");
}

TEST(Statistics, ChooseTheTrayImage) {
    const auto imageOf = [](const ActivityCounters& activity) {
        return trayImage({.hasSites = true, .activity = activity});
    };
    EXPECT_EQ(trayImage({}), "tray-offline");
    EXPECT_EQ(imageOf({.idlers = 5}), "tray-idle");
    EXPECT_EQ(imageOf({.downloaders = 1}), "tray-down");
    EXPECT_EQ(imageOf({.uploaders = 1}), "tray-up");
    EXPECT_EQ(imageOf({.uploaders = 2, .downloaders = 1}), "tray-both");
}

} // namespace
} // namespace corvel

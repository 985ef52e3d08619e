#include "net/Statistics.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

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
    struct Row {
        const char* name;
        Status status;
        std::string onlineTemplate;
        std::string offlineTemplate;
        std::string text;
    };
    const std::vector<Row> rows = {
        {"no site", {}, "on", "", "Corvel"},
        {"logged in, no template", online, "", "off", "Corvel - home"},
        {"not logged in, no template", offline, "on", "", "Corvel - home"},
        {"logged in", online, "%(sitename): %(ONLINE_UP,4,R) up, %(bandwidth_total)", "off",
         "home:    3 up, 160"},
        {"not logged in", offline, "on", "%(sitename) is away", "home is away"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(statusText(row.status, row.onlineTemplate, row.offlineTemplate), row.text) << row.name;
    }
}

TEST(Statistics, ChooseTheTrayImage) {
    struct Row {
        const char* name;
        bool hasSites;
        ActivityCounters activity;
        std::string_view image;
    };
    const std::vector<Row> rows = {
        {"no site at all", false, {}, "tray-offline"},
        {"nobody", true, {}, "tray-idle"},
        {"one downloader", true, {.downloaders = 1}, "tray-down"},
        {"one uploader", true, {.uploaders = 1}, "tray-up"},
        {"both", true, {.uploaders = 2, .downloaders = 1}, "tray-both"},
        {"speed without transfers", true, {.uploadSpeed = 9, .downloadSpeed = 9}, "tray-idle"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(trayImage({.hasSites = row.hasSites, .activity = row.activity}), row.image) << row.name;
    }
}

} // namespace
} // namespace corvel

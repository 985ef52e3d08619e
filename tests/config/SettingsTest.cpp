#include "config/Settings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Settings, ReadsEachKindOfKey) {
    const SettingsReading reading = parseSettings({
        "  ; show_trayicon = 1",
        "# minimize_to_tray = 1",
        "Listing_Merge_Blanks = 2",
        "ssl_tunnel_host = 127.0.0.1",
        "ssl_tunnel_port = 4000x",
        "textbox_fontsize = -9.7",
        "site_nuke_replace_spaces = __",
        "menu_tray = Quit | %exit",
        "menu_tray =  a | b | c ",
        "menu_tray = no command",
        "trayicon_up = one.png",
        "trayicon_up = two.png",
        "color_a = 123",
        "color_b = &hFF0000",
        "unknown = x",
    });
    const Settings& settings = reading.settings;
    EXPECT_TRUE(reading.problems.empty());
    EXPECT_FALSE(settings.show_trayicon);
    EXPECT_FALSE(settings.minimize_to_tray);
    EXPECT_TRUE(settings.listing_merge_blanks);
    EXPECT_EQ(settings.ssl_tunnel_port, 4000);
    EXPECT_EQ(settings.textbox_fontsize, 10);
    EXPECT_EQ(settings.site_nuke_replace_spaces, "_");
    EXPECT_EQ(settings.menu_tray, (std::vector<MenuEntry>{{"Quit", "%exit"}, {"a", "b | c"}}));
    EXPECT_EQ(settings.images,
              (std::vector<std::pair<std::string, std::string>>{{"trayicon_up", "two.png"}}));
    EXPECT_EQ(settings.colors,
              (std::vector<std::pair<std::string, std::string>>{{"color_a", "0"}, {"color_b", "&hFF0000"}}));
}

TEST(Settings, DefaultsAndReportsWhatIsNoNumber) {
    struct Row {
        const char* name;
        std::string line;
        std::string problem; // empty: none
    };
    const std::vector<Row> rows = {
        {"font size in words", "textbox_fontsize = big",
         "settings.ini: textbox_fontsize: \"big\" is no number"},
        {"font size of nothing", "textbox_fontsize = 0",
         "settings.ini: textbox_fontsize: \"0\" is no font size"},
        {"port in words", "ssl_tunnel_port = ftp", "settings.ini: ssl_tunnel_port: \"ftp\" is no number"},
        {"port beyond 32 bits", "ssl_tunnel_port = 99999999999",
         "settings.ini: ssl_tunnel_port: \"99999999999\" is no 32-bit number"},
        {"a switch in words is off", "show_trayicon = yes", ""},
    };
    for (const Row& row : rows) {
        const SettingsReading reading = parseSettings({row.line});
        EXPECT_EQ(reading.problems,
                  row.problem.empty() ? std::vector<std::string>() : std::vector<std::string>{row.problem})
            << row.name;
        EXPECT_EQ(reading.settings.textbox_fontsize, std::nullopt) << row.name;
        EXPECT_EQ(reading.settings.ssl_tunnel_port, 0) << row.name;
        EXPECT_FALSE(reading.settings.show_trayicon) << row.name;
    }
}

TEST(Settings, ReadsAnAnsiFileAsAWhole) {
    const SettingsReading reading = parseSettings({"textbox_fontname = f\xFC"
                                                   "r",
                                                   "ssl_tunnel_host = h\xC3\xBC"});
    EXPECT_EQ(reading.settings.textbox_fontname, "für");
    EXPECT_EQ(reading.settings.ssl_tunnel_host, "hÃ¼");
}

} // namespace
} // namespace corvel

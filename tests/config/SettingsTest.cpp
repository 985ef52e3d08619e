#include "config/Settings.h"

#include "common/Ports.h"
#include "config/WindowState.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Settings, ReadsEachKindOfKey) {
    const SettingsReading reading = parseSettings({
        "\xEF\xBB\xBFtextbox_fontname = Mono", // as an editor saves UTF-8
        "  ; show_trayicon = 1",
        "# minimize_to_tray = 1",
        "Listing_Merge_Blanks = 2",
        "mask_passwords = 1",
        "ssl_tunnel_host = 127.0.0.1",
        "ssl_tunnel_port = 4000x",
        "textbox_fontsize = -9.7",
        "site_nuke_replace_spaces = \u00FCx",
        "menu_tray = Quit | %exit",
        "menu_tray =  a | b | c ",
        "menu_tray = no command",
        "trayicon_up = one.png",
        "trayicon_up = two.png",
        "tabicon_results = r.png",
        "color_a = 123",
        "color_b = &hFF0000",
        "color_c =",
        "unknown = x",
        "no equals sign",
    });
    const Settings& settings = reading.settings;
    EXPECT_TRUE(reading.problems.empty());
    EXPECT_EQ(settings.textbox_fontname, "Mono");
    EXPECT_FALSE(settings.show_trayicon);
    EXPECT_FALSE(settings.minimize_to_tray);
    EXPECT_TRUE(settings.listing_merge_blanks);
    EXPECT_TRUE(settings.mask_passwords);
    EXPECT_EQ(settings.ssl_tunnel_host, "127.0.0.1");
    EXPECT_EQ(settings.ssl_tunnel_port, 4000);
    EXPECT_EQ(settings.textbox_fontsize, 10);
    EXPECT_EQ(settings.site_nuke_replace_spaces, "\u00FC");
    EXPECT_EQ(settings.menu_tray, (std::vector<MenuEntry>{{"Quit", "%exit"}, {"a", "b | c"}}));
    EXPECT_EQ(settings.images[1], "two.png");
    EXPECT_EQ(settings.images[17], "r.png");
    EXPECT_EQ(std::ranges::count(settings.images, ""), 16);
    EXPECT_EQ(settings.colors, (std::map<std::string, std::string>{
                                   {"color_a", "0"}, {"color_b", "&hFF0000"}, {"color_c", "0"}}));
}

TEST(Settings, DefaultsAndReportsWhatIsNoNumber) {
    const SettingsReading reading =
        parseSettings({"textbox_fontsize = 9pt", "textbox_fontsize = 1001", "ssl_tunnel_port = 99999999999",
                       "show_trayicon = yes", "ssl_tunnel_host = read on"});
    EXPECT_EQ(reading.problems, (std::vector<std::string>{
                                    "settings.ini: textbox_fontsize: \"9pt\" is no number",
                                    "settings.ini: textbox_fontsize: \"1001\" is no font size",
                                    "settings.ini: ssl_tunnel_port: \"99999999999\" is no 32-bit number"}));
    EXPECT_EQ(reading.settings, (Settings{.ssl_tunnel_host = "read on"}));
}

TEST(Settings, ReadsAnAnsiFileAsAWhole) {
    const Settings read =
        parseSettings({"\xEF\xBB\xBFtextbox_fontname = \xFC", "ssl_tunnel_host = h\xC3\xBC"}).settings;
    EXPECT_EQ(read.textbox_fontname, "ü");
    EXPECT_EQ(read.ssl_tunnel_host, "hÃ¼");
}

TEST(Settings, TellsWhyAFileCannotBeRead) {
    const test::TemporaryDirectory directory;
    const std::string path = directory.fileNamed("settings.ini");
    EXPECT_TRUE(readSettings(path).problems.empty()) << "there is none";
    directory.write("settings.ini", std::string("\xFF\xFEs\0h\0o\0w", 8));
    ASSERT_EQ(readSettings(path).problems.size(), 1U);
    EXPECT_NE(readSettings(path).problems[0].find("UTF-16"), std::string::npos);
    EXPECT_EQ(readSettings(directory.path()).problems.size(), 1U) << "a directory";
}

TEST(SettingsForm, GivesBackWhatItShowsAndItsOwnAlone) {
    WindowState state;
    state.columns[4].width = 77;
    state.selected_tab = 5;
    SettingsForm form = settingsForm(state, {});
    EXPECT_EQ(savedSettings(form, state), state);

    moveColumn(form, 0, 1);
    form.lvwAL[0].show = false;
    form.lblSampleColors[2].background = 6;
    WindowState expected = state;
    expected.columns[3].position = 2;
    expected.columns[3].shown = false;
    expected.columns[2].position = 3;
    expected.activitylist_color_dn_bg = 6;
    EXPECT_EQ(savedSettings(form, state), expected);
}

// Every key takes a value of its own, so that two that share a member cannot both come back.
TEST(WindowState, EveryKeyComesBackAsItWasSaved) {
    std::map<std::string, std::string> stored = {
        {"window_state", "0"},    {"selected_tab", "3"},        {"always_on_top", "1"},
        {"show_sites_list", "1"}, {"sites_list_viewmode", "0"}, {"activitylist_use_colors", "1"},
        {"tray_hint_given", "1"}};
    int value = 100;
    for (const char* key :
         {"window_top", "window_left", "window_height", "window_width", "splitbar_left_wide",
          "splitbar_left_narrow", "activitylist_color_idle_fg", "activitylist_color_idle_bg",
          "activitylist_color_up_fg", "activitylist_color_up_bg", "activitylist_color_dn_fg",
          "activitylist_color_dn_bg"}) {
        stored[key] = std::to_string(++value);
    }
    for (std::size_t column = firstMovableColumn; column < activityColumnCount; ++column) {
        const std::string number = std::to_string(column);
        stored["activitylist_autosize_" + number] = column % 2 == 0 ? "True" : "False";
        stored["activitylist_columnorder_" + number] = std::to_string(19 - column);
        stored["activitylist_width_" + number] = std::to_string(1000 + column);
    }
    MemoryStore store;
    for (const auto& [key, text] : stored) {
        store.setValue(key, text);
    }
    store.setValue("activitylist_columnorder_0", "9"); // of columns that are not loaded
    store.setValue("activitylist_width_1", "9");
    const WindowStateReading reading = loadWindowState(store, {});
    EXPECT_EQ(reading.problems, std::vector<std::string>());
    EXPECT_EQ(reading.state.columns[0], WindowState().columns[0]);
    EXPECT_EQ(reading.state.columns[1], WindowState().columns[1]);
    MemoryStore saved;
    saveWindowState(saved, reading.state);
    for (const auto& [key, text] : stored) {
        EXPECT_EQ(saved.value(key), text) << key;
    }
    EXPECT_EQ(saved.value("activitylist_columnorder_1"), "1");
}

TEST(WindowState, KeepsTheGeometryOfTheLastTimeOnScreen) {
    for (const auto& [left, top, storedLeft] :
         {std::tuple(150, 150, "150"), {-99, -99, "-99"}, {-100, 0, "1"}, {0, -100, "1"}}) {
        MemoryStore store;
        store.setValue("window_left", "1");
        WindowState state;
        state.window_state = 0;
        state.window_left = left;
        state.window_top = top;
        saveWindowState(store, state);
        EXPECT_EQ(store.value("window_left"), storedLeft);
        EXPECT_EQ(store.value("window_state"), "0");
    }
}

TEST(WindowState, ReportsAndDefaultsWhatCannotBeUsed) {
    struct Row {
        const char* key;
        const char* value;
        const char* problem;
    };
    const std::vector<Row> rows = {
        {"window_left", "", "\"\" is no number"},
        {"window_width", "0", "\"0\" is no value for this key"},
        {"selected_tab", "99999999999", "\"99999999999\" is no value for this key"},
        {"show_sites_list", "yes", "\"yes\" is no number"},
        {"activitylist_autosize_3", "maybe", "\"maybe\" is no switch"},
        {"activitylist_columnorder_3", "1", "\"1\" is no value for this key"},
    };
    for (const Row& row : rows) {
        MemoryStore store;
        store.setValue(row.key, row.value);
        store.setValue("splitbar_left_narrow", "77.5");
        const WindowStateReading reading = loadWindowState(store, {});
        WindowState expected;
        expected.splitbar_left_narrow = 78;
        EXPECT_EQ(reading.state, expected) << row.key << row.value;
        EXPECT_EQ(reading.problems,
                  std::vector<std::string>{
                      std::string("stored state: ").append(row.key).append(": ").append(row.problem)});
    }
}

} // namespace
} // namespace corvel

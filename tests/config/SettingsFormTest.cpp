#include "config/SettingsForm.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(SettingsForm, ShowsTheColumnsInTheirOrderOnScreen) {
    WindowState state;
    state.columns[17].position = 2; // a damaged store may give one position twice
    state.columns[3].shown = false;
    state.columns[5].autosize = false;
    state.activitylist_color_up_bg = 0x123456;
    Settings settings;
    settings.ssl_tunnel_port = 4000;
    settings.minimize_to_tray = true;
    const SettingsForm form = settingsForm(state, settings);
    EXPECT_EQ(form.lvwAL[0], (ColumnRow{.id = 2}));
    EXPECT_EQ(form.lvwAL[1], (ColumnRow{.id = 17}));
    EXPECT_EQ(form.lvwAL[2], (ColumnRow{.id = 3, .show = false}));
    EXPECT_EQ(form.lvwAL[4], (ColumnRow{.id = 5, .autosize = false}));
    EXPECT_EQ(form.lvwAL[15], (ColumnRow{.id = 16}));
    EXPECT_EQ(columnName(form.lvwAL[0]), "cid");
    EXPECT_EQ(columnName(form.lvwAL[1]), "session time");
    EXPECT_EQ(form.lblSampleColors[1], (SampleColors{.text = 0xFFFFFF, .background = 0x123456}));
    EXPECT_EQ(form.txtSSLPort, "4000");
    EXPECT_FALSE(form.chkShowTrayIcon);
    EXPECT_TRUE(form.chkMinimizeToTray);
}

TEST(SettingsForm, MovesAColumnWithinTheList) {
    struct Row {
        const char* name;
        std::size_t row;
        int step;
        std::size_t then;
    };
    const std::vector<Row> rows = {
        {"down", 0, 1, 1},
        {"up", 15, -1, 14},
        {"past the top", 0, -1, 0},
        {"past the bottom", 15, 1, 15},
    };
    for (const Row& row : rows) {
        const SettingsForm before = settingsForm({}, {});
        SettingsForm form = before;
        EXPECT_EQ(moveColumn(form, row.row, row.step), row.then) << row.name;
        EXPECT_EQ(form.lvwAL[row.then], before.lvwAL[row.row]) << row.name;
        EXPECT_EQ(form.lvwAL[row.row], before.lvwAL[row.then]) << row.name;
    }
}

TEST(SettingsForm, GivesBackWhatItShowsAndItsOwnAlone) {
    WindowState state;
    state.columns[4].width = 77;
    state.selected_tab = 5;
    SettingsForm form = settingsForm(state, {});
    EXPECT_EQ(savedSettings(form, state), state);

    moveColumn(form, 0, 1);
    form.lvwAL[0].show = false;
    form.lvwAL[1].autosize = false;
    form.chkALUseColors = true;
    form.lblSampleColors = {{{1, 2}, {3, 4}, {5, 6}}};
    WindowState expected = state;
    expected.columns[3].position = 2;
    expected.columns[3].shown = false;
    expected.columns[2].position = 3;
    expected.columns[2].autosize = false;
    expected.activitylist_use_colors = true;
    expected.activitylist_color_idle_fg = 1;
    expected.activitylist_color_idle_bg = 2;
    expected.activitylist_color_up_fg = 3;
    expected.activitylist_color_up_bg = 4;
    expected.activitylist_color_dn_fg = 5;
    expected.activitylist_color_dn_bg = 6;
    EXPECT_EQ(savedSettings(form, state), expected);
}

} // namespace
} // namespace corvel

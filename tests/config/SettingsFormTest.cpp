#include "config/Settings.h"

#include <gtest/gtest.h>

namespace corvel {
namespace {

TEST(SettingsForm, ShowsTheColumnsInTheirOrderOnScreen) {
    WindowState state;
    state.columns[17].position = 2; // a damaged store may give one position twice
    state.columns[3].shown = false;
    const SettingsForm form = settingsForm(state, {});
    EXPECT_EQ(form.lvwAL[0], (ColumnRow{.id = 2}));
    EXPECT_EQ(form.lvwAL[1], (ColumnRow{.id = 17}));
    EXPECT_EQ(form.lvwAL[2], (ColumnRow{.id = 3, .show = false}));
    EXPECT_EQ(form.lvwAL[15], (ColumnRow{.id = 16}));
    EXPECT_EQ(columnName(form.lvwAL[1]), "session time");
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

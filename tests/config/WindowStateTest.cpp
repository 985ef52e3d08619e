#include "config/WindowState.h"

#include "config/MemoryStore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(WindowState, StartsFromItsDefaults) {
    WindowState design;
    design.window_width = 15000;
    const WindowStateReading reading = loadWindowState(MemoryStore(), design);
    EXPECT_EQ(reading.state, design);
    EXPECT_TRUE(reading.problems.empty());
    EXPECT_EQ(reading.state.window_state, 2);
    EXPECT_EQ(reading.state.sites_list_viewmode, 3);
    EXPECT_EQ(reading.state.columns[2].width, 700);
    EXPECT_EQ(reading.state.columns[17].width, 1100);
    EXPECT_EQ(reading.state.columns[17].position, 17);
}

TEST(WindowState, ComesBackAsItWasSaved) {
    WindowState state;
    state.window_left = 150;
    state.window_top = -90;
    state.window_state = 1;
    state.splitbar_left_narrow = 777;
    state.columns[5] = {.position = 9, .autosize = false, .width = 1234};
    state.activitylist_color_up_bg = 65280;
    MemoryStore store;
    saveWindowState(store, state, true);
    EXPECT_EQ(loadWindowState(store, {}).state, state);
    EXPECT_EQ(store.value("activitylist_autosize_5"), "False");

    WindowState minimised = state;
    minimised.window_left = -32000;
    minimised.selected_tab = 3;
    saveWindowState(store, minimised, false);
    EXPECT_EQ(loadWindowState(store, {}).state.window_left, 150);
    EXPECT_EQ(loadWindowState(store, {}).state.selected_tab, 3);
}

TEST(WindowState, ReportsAndDefaultsWhatIsNoNumber) {
    MemoryStore store;
    store.setValue("window_state", "big");
    store.setValue("selected_tab", "99999999999");
    store.setValue("activitylist_columnorder_3", "70000");
    store.setValue("activitylist_autosize_3", "maybe");
    const WindowStateReading reading = loadWindowState(store, {});
    EXPECT_EQ(reading.state, WindowState());
    EXPECT_EQ(reading.problems, (std::vector<std::string>{
                                    "stored state: window_state: \"big\" is no number",
                                    "stored state: selected_tab: \"99999999999\" is no 32-bit number",
                                    "stored state: activitylist_autosize_3: \"maybe\" is no switch",
                                    "stored state: activitylist_columnorder_3: \"70000\" is no 16-bit number",
                                }));
}

} // namespace
} // namespace corvel

#include "config/WindowState.h"

#include "config/MemoryStore.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace corvel {
namespace {

constexpr std::array<const char*, 19> plainKeys = {
    "window_state",
    "window_top",
    "window_left",
    "window_height",
    "window_width",
    "splitbar_left_wide",
    "splitbar_left_narrow",
    "selected_tab",
    "always_on_top",
    "show_sites_list",
    "sites_list_viewmode",
    "activitylist_use_colors",
    "activitylist_color_idle_fg",
    "activitylist_color_idle_bg",
    "activitylist_color_up_fg",
    "activitylist_color_up_bg",
    "activitylist_color_dn_fg",
    "activitylist_color_dn_bg",
    "tray_hint_given",
};

TEST(WindowState, StartsFromItsDefaults) {
    WindowState design;
    design.window_width = 15000;
    const WindowStateReading reading = loadWindowState(MemoryStore(), design);
    EXPECT_EQ(reading.state, design);
    EXPECT_TRUE(reading.problems.empty());
    EXPECT_EQ(reading.state.window_state, 2);
    EXPECT_EQ(reading.state.splitbar_left_wide, 1500);
    EXPECT_EQ(reading.state.sites_list_viewmode, 3);
    EXPECT_FALSE(reading.state.show_sites_list);
    EXPECT_EQ(reading.state.activitylist_color_up_bg, 255);
    EXPECT_EQ(reading.state.activitylist_color_dn_bg, 16711680);
    EXPECT_EQ(reading.state.columns[2], (ActivityColumn{.position = 2, .autosize = true, .width = 700}));
    EXPECT_EQ(reading.state.columns[17], (ActivityColumn{.position = 17, .autosize = true, .width = 1100}));
}

// Every key takes a value of its own, so that two that share a member cannot both come back.
TEST(WindowState, EveryKeyComesBackAsItWasSaved) {
    MemoryStore store;
    for (std::size_t i = 0; i < plainKeys.size(); ++i) {
        const std::string key = plainKeys[i];
        const bool isSmall = key == "selected_tab" || key == "sites_list_viewmode" || key == "window_state";
        const bool isFlag = key == "always_on_top" || key == "activitylist_use_colors" ||
                            key == "show_sites_list" || key == "tray_hint_given";
        store.setValue(key, isSmall || isFlag ? (key == "selected_tab" ? "3"
                                                 : isFlag              ? "1"
                                                                       : "0")
                                              : std::to_string(100 + i));
    }
    for (std::size_t column = firstMovableColumn; column < activityColumnCount; ++column) {
        const std::string number = std::to_string(column);
        store.setValue("activitylist_autosize_" + number, column % 2 == 0 ? "True" : "False");
        store.setValue("activitylist_columnorder_" + number, std::to_string(19 - column));
        store.setValue("activitylist_width_" + number, std::to_string(1000 + column));
    }
    const WindowStateReading reading = loadWindowState(store, {});
    EXPECT_EQ(reading.problems, std::vector<std::string>());
    MemoryStore saved;
    saveWindowState(saved, reading.state, true);
    for (const char* key : plainKeys) {
        EXPECT_EQ(saved.value(key), store.value(key)) << key;
    }
    for (std::size_t column = firstMovableColumn; column < activityColumnCount; ++column) {
        for (const char* quality :
             {"activitylist_autosize_", "activitylist_columnorder_", "activitylist_width_"}) {
            const std::string key = quality + std::to_string(column);
            EXPECT_EQ(saved.value(key), store.value(key)) << key;
        }
    }
    EXPECT_EQ(saved.value("activitylist_columnorder_1"), "1");
    EXPECT_EQ(loadWindowState(saved, {}).state, reading.state);
}

TEST(WindowState, KeepsTheGeometryOfTheLastTimeOnScreen) {
    struct Row {
        const char* name;
        WindowMode mode;
        std::int32_t left;
        std::int32_t top;
        bool withGeometry;
        const char* storedLeft;
    };
    constexpr WindowMode normal = WindowMode::normal;
    const std::vector<Row> rows = {
        {"on screen", normal, 150, 150, true, "150"},
        {"a little over the edge", normal, -99, -99, true, "-99"},
        {"too far left", normal, -100, 0, true, "1"},
        {"too far up", normal, 0, -100, true, "1"},
        {"maximised, with its normal geometry", WindowMode::maximised, 150, 150, true, "150"},
        {"minimised", WindowMode::minimised, 150, 150, true, "1"},
        {"not asked for", normal, 150, 150, false, "1"},
    };
    for (const Row& row : rows) {
        MemoryStore store;
        store.setValue("window_left", "1");
        WindowState state;
        state.window_state = static_cast<std::int32_t>(row.mode);
        state.window_left = row.left;
        state.window_top = row.top;
        saveWindowState(store, state, row.withGeometry);
        EXPECT_EQ(store.value("window_left"), row.storedLeft) << row.name;
        EXPECT_EQ(store.value("window_width").has_value(), row.storedLeft != std::string("1")) << row.name;
        EXPECT_EQ(store.value("window_state"), std::to_string(static_cast<int>(row.mode))) << row.name;
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
        {"window_state", "big", "\"big\" is no number"},
        {"window_state", "2x", "\"2x\" is no number"},
        {"window_state", "3", "\"3\" is no value for this key"},
        {"splitbar_left_wide", "-1", "\"-1\" is no value for this key"},
        {"selected_tab", "99999999999", "\"99999999999\" is no value for this key"},
        {"show_sites_list", "yes", "\"yes\" is no number"},
        {"activitylist_color_up_fg", "16777216", "\"16777216\" is no value for this key"},
        {"activitylist_autosize_3", "maybe", "\"maybe\" is no switch"},
        {"activitylist_columnorder_3", "18", "\"18\" is no value for this key"},
        {"activitylist_columnorder_3", "1", "\"1\" is no value for this key"},
        {"activitylist_width_3", "wide", "\"wide\" is no number"},
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

TEST(WindowState, TheFixedColumnsAreNotLoaded) {
    MemoryStore store;
    store.setValue("activitylist_columnorder_0", "9");
    store.setValue("activitylist_width_1", "9");
    EXPECT_EQ(loadWindowState(store, {}).state, WindowState());
}

TEST(WindowState, OrdersTheColumnsEvenWithOnePositionTwice) {
    WindowState state;
    state.columns[2].position = 17;
    state.columns[16].position = 2;
    const auto order = activityColumnOrder(state);
    EXPECT_EQ(std::set(order.begin(), order.end()).size(), activityColumnCount);
    EXPECT_EQ(order[0], 0U);
    EXPECT_EQ(order[1], 1U);
    EXPECT_EQ(order[2], 16U);
    EXPECT_EQ(order[16], 2U);
    EXPECT_EQ(order[17], 17U);
}

} // namespace
} // namespace corvel

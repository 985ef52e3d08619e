#include "config/WindowState.h"

#include "common/Ports.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace corvel {
namespace {

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

#pragma once

#include "common/Ports.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// Where the per-user store of the platform keeps the state.
inline constexpr std::string_view storeApplication = "Voskar Drennix";
inline constexpr std::string_view storeSection = "Corvel2";

// The values of window_state and of sites_list_viewmode.
enum class WindowMode : std::int32_t { normal = 0, minimised = 1, maximised = 2 };
enum class SitesView : std::int32_t { icons = 0, report = 3 };

// What is remembered of a column of the activity list.
struct ActivityColumn {
    std::int16_t position = 0;
    bool autosize = true;
    std::int32_t width = 0; // used while autosize is off
    bool shown = true;      // for this run: the store does not know it

    bool operator==(const ActivityColumn&) const = default;
};

// The activity list's columns: the first two are fixed, the others are loaded from the store.
inline constexpr std::size_t activityColumnCount = 18;
inline constexpr std::size_t firstMovableColumn = 2;

// The headers of the movable columns, from firstMovableColumn on.
inline constexpr std::array<std::string_view, activityColumnCount - firstMovableColumn>
    activityColumnHeaders = {"cid",       "user",        "group",    "ident",       "hostname", "ip",
                             "dataip",    "service",     "action",   "speed",       "last cmd", "pwd",
                             "real path", "transferred", "idletime", "session time"};

// What the program remembers by itself from one run to the next: a member per key of the store and named as
// it. Lengths are in units of 1/1440 inch; colours have red in the low byte. A new record holds the defaults,
// with a geometry of zeros that the window replaces by its own.
struct WindowState {
    WindowState();

    std::int32_t window_left;
    std::int32_t window_top;
    std::int32_t window_width;
    std::int32_t window_height;
    std::int32_t window_state;
    std::int32_t splitbar_left_wide;
    std::int32_t splitbar_left_narrow;
    std::int32_t selected_tab; // from 1
    bool always_on_top;
    bool show_sites_list;
    std::int32_t sites_list_viewmode;
    std::array<ActivityColumn, activityColumnCount> columns;
    bool activitylist_use_colors;
    std::int32_t activitylist_color_idle_fg;
    std::int32_t activitylist_color_idle_bg;
    std::int32_t activitylist_color_up_fg;
    std::int32_t activitylist_color_up_bg;
    std::int32_t activitylist_color_dn_fg;
    std::int32_t activitylist_color_dn_bg;
    bool tray_hint_given; // the tray icon has said how to get a hidden window back

    bool operator==(const WindowState&) const = default;
};

// State, and a line for the error stream about each stored value that could not be used; its default stands
// instead.
struct WindowStateReading {
    WindowState state;
    std::vector<std::string> problems;
};

// defaults: what holds where nothing usable is stored, with the window's present geometry in it.
WindowStateReading loadWindowState(const StateStore& store, const WindowState& defaults);

// Writes the state, every column included. The geometry, which is that of the window in its normal state, is
// not written where the window lies far off the screen: what is stored then stays.
void saveWindowState(StateStore& store, const WindowState& state);

// The numbers of the columns as they follow each other on screen: by position, and by number where a damaged
// store gives one position twice.
std::array<std::size_t, activityColumnCount> activityColumnOrder(const WindowState& state);

} // namespace corvel

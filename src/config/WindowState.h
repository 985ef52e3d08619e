#pragma once

#include "common/ports/StateStore.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// Where the per-user store of the platform keeps the state.
inline constexpr std::string_view storeApplication = "Voskar Drennix";
inline constexpr std::string_view storeSection = "Corvel2";

// The states of a window and the views of the sites list, as they are stored.
enum class WindowMode : std::int32_t { normal = 0, minimised = 1, maximised = 2 };
enum class SitesView : std::int32_t { icons = 0, report = 3 };

// What is remembered about a column of the activity list.
struct ActivityColumn {
    std::int16_t position = 0;
    bool autosize = true;
    std::int32_t width = 0;

    bool operator==(const ActivityColumn&) const = default;
};

// What the program remembers between runs. A member is named as its key in the store. Lengths are in units of
// 1/1440 inch, colours hold red in the low byte.
struct WindowState {
    static constexpr std::size_t activityColumns = 18;
    static constexpr std::size_t firstStoredColumn = 2;

    std::int32_t window_left = 0;
    std::int32_t window_top = 0;
    std::int32_t window_width = 0;
    std::int32_t window_height = 0;
    std::int32_t window_state = static_cast<std::int32_t>(WindowMode::maximised);
    std::int32_t splitbar_left_wide = 1500;
    std::int32_t splitbar_left_narrow = 1500;
    std::int32_t sites_list_viewmode = static_cast<std::int32_t>(SitesView::report);
    std::int32_t selected_tab = 1; // from 1
    std::int32_t always_on_top = 0;
    std::int32_t show_sites_list = 0;

    std::array<ActivityColumn, activityColumns> columns = defaultColumns();
    std::int32_t activitylist_use_colors = 0;
    std::int32_t activitylist_color_idle_fg = 0;
    std::int32_t activitylist_color_idle_bg = 16777215;
    std::int32_t activitylist_color_up_fg = 16777215;
    std::int32_t activitylist_color_up_bg = 255;
    std::int32_t activitylist_color_dn_fg = 16777215;
    std::int32_t activitylist_color_dn_bg = 16711680;

    static std::array<ActivityColumn, activityColumns> defaultColumns();

    bool operator==(const WindowState&) const = default;
};

// State read, and one line about each stored value that was none; its default stands instead.
struct WindowStateReading {
    WindowState state;
    std::vector<std::string> problems;
};

// defaults: the state where nothing is stored, with the window's own geometry.
WindowStateReading loadWindowState(const StateStore& store, const WindowState& defaults);

// Writes the whole state, the geometry only where withGeometry says that it is the one of a window that lies
// on screen.
void saveWindowState(StateStore& store, const WindowState& state, bool withGeometry);

} // namespace corvel

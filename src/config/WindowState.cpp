#include "config/WindowState.h"

#include "common/Errors.h"
#include "common/Numbers.h"

namespace corvel {

namespace {

enum class Group { always, geometry };

struct NumberKey {
    std::string_view key;
    std::int32_t WindowState::*member;
    Group group;
};

constexpr std::array<NumberKey, 18> numbers = {{
    {"window_state", &WindowState::window_state, Group::always},
    {"window_top", &WindowState::window_top, Group::geometry},
    {"window_left", &WindowState::window_left, Group::geometry},
    {"window_height", &WindowState::window_height, Group::geometry},
    {"window_width", &WindowState::window_width, Group::geometry},
    {"splitbar_left_wide", &WindowState::splitbar_left_wide, Group::always},
    {"splitbar_left_narrow", &WindowState::splitbar_left_narrow, Group::always},
    {"selected_tab", &WindowState::selected_tab, Group::always},
    {"always_on_top", &WindowState::always_on_top, Group::always},
    {"show_sites_list", &WindowState::show_sites_list, Group::always},
    {"sites_list_viewmode", &WindowState::sites_list_viewmode, Group::always},
    {"activitylist_use_colors", &WindowState::activitylist_use_colors, Group::always},
    {"activitylist_color_idle_fg", &WindowState::activitylist_color_idle_fg, Group::always},
    {"activitylist_color_idle_bg", &WindowState::activitylist_color_idle_bg, Group::always},
    {"activitylist_color_up_fg", &WindowState::activitylist_color_up_fg, Group::always},
    {"activitylist_color_up_bg", &WindowState::activitylist_color_up_bg, Group::always},
    {"activitylist_color_dn_fg", &WindowState::activitylist_color_dn_fg, Group::always},
    {"activitylist_color_dn_bg", &WindowState::activitylist_color_dn_bg, Group::always},
}};

std::string columnKey(std::string_view name, std::size_t column) {
    return "activitylist_" + std::string(name) + "_" + std::to_string(column);
}

// Reads values one by one and remembers which were none.
class Reader {
  public:
    Reader(const StateStore& store, std::vector<std::string>& problems)
        : store_(store), problems_(problems) {}

    // The stored value as convert reads it, or fallback.
    template <typename Value, typename Convert>
    Value read(std::string_view key, Value fallback, Convert convert) {
        const std::optional<std::string> stored = store_.value(key);
        if (!stored) {
            return fallback;
        }
        try {
            return convert(*stored);
        } catch (const ConversionError& error) {
            problems_.push_back("stored state: " + std::string(key) + ": " + error.what());
            return fallback;
        }
    }

    template <typename Integer>
    Integer number(std::string_view key, Integer fallback) {
        return read(key, fallback, [](const std::string& text) {
            if (!hasLeadingNumber(text)) {
                throw ConversionError(text, "number");
            }
            if constexpr (sizeof(Integer) == sizeof(std::int16_t)) {
                return toInt16(text);
            } else {
                return toInt32(text);
            }
        });
    }

    bool boolean(std::string_view key, bool fallback) {
        return read(key, fallback, [](const std::string& text) { return toBoolean(text); });
    }

  private:
    const StateStore& store_;
    std::vector<std::string>& problems_;
};

} // namespace

std::array<ActivityColumn, WindowState::activityColumns> WindowState::defaultColumns() {
    constexpr std::array<std::int32_t, activityColumns> widths = {
        0, 0, 700, 1500, 1500, 1000, 1500, 1300, 1300, 1300, 1000, 1200, 1500, 1500, 1500, 1200, 1000, 1100};
    std::array<ActivityColumn, activityColumns> columns;
    for (std::size_t i = 0; i < activityColumns; ++i) {
        columns[i] = {.position = static_cast<std::int16_t>(i), .autosize = true, .width = widths[i]};
    }
    return columns;
}

WindowStateReading loadWindowState(const StateStore& store, const WindowState& defaults) {
    WindowStateReading reading{.state = defaults, .problems = {}};
    Reader reader(store, reading.problems);
    for (const NumberKey& key : numbers) {
        std::int32_t& value = reading.state.*key.member;
        value = reader.number(key.key, value);
    }
    for (std::size_t i = WindowState::firstStoredColumn; i < WindowState::activityColumns; ++i) {
        ActivityColumn& column = reading.state.columns[i];
        column.autosize = reader.boolean(columnKey("autosize", i), column.autosize);
        column.position = reader.number(columnKey("columnorder", i), column.position);
        column.width = reader.number(columnKey("width", i), column.width);
    }
    return reading;
}

void saveWindowState(StateStore& store, const WindowState& state, bool withGeometry) {
    for (const NumberKey& key : numbers) {
        if (key.group == Group::always || withGeometry) {
            store.setValue(key.key, std::to_string(state.*key.member));
        }
    }
    for (std::size_t i = WindowState::firstStoredColumn; i < WindowState::activityColumns; ++i) {
        const ActivityColumn& column = state.columns[i];
        store.setValue(columnKey("autosize", i), column.autosize ? "True" : "False");
        store.setValue(columnKey("columnorder", i), std::to_string(column.position));
        store.setValue(columnKey("width", i), std::to_string(column.width));
    }
}

} // namespace corvel

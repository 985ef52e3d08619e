#include "config/WindowState.h"

#include "common/Errors.h"
#include "common/Numbers.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <variant>

namespace corvel {

namespace {

using StatePlace = std::variant<std::int32_t WindowState::*, bool WindowState::*>;

struct StateKey {
    std::string_view key;
    StatePlace place;
    std::int32_t fallback = 0;
    std::int32_t lowest = 0; // the limits of a number
    std::int32_t highest = 0;
};

// A million pixels: more than any desktop has, and far from where sums of lengths would overflow.
constexpr std::int32_t longest = 15'000'000;
constexpr std::int32_t white = 0xFFFFFF;
constexpr std::int32_t red = 0x0000FF;
constexpr std::int32_t blue = 0xFF0000;

constexpr std::array<StateKey, 19> stateKeys = {{
    {"window_state", &WindowState::window_state, 2, 0, 2},
    {"window_top", &WindowState::window_top, 0, -longest, longest},
    {"window_left", &WindowState::window_left, 0, -longest, longest},
    {"window_height", &WindowState::window_height, 0, 1, longest},
    {"window_width", &WindowState::window_width, 0, 1, longest},
    {"splitbar_left_wide", &WindowState::splitbar_left_wide, 1500, 0, longest},
    {"splitbar_left_narrow", &WindowState::splitbar_left_narrow, 1500, 0, longest},
    {"selected_tab", &WindowState::selected_tab, 1, 1, 8},
    {"always_on_top", &WindowState::always_on_top},
    {"show_sites_list", &WindowState::show_sites_list},
    {"sites_list_viewmode", &WindowState::sites_list_viewmode, 3, 0, 3},
    {"activitylist_use_colors", &WindowState::activitylist_use_colors},
    {"activitylist_color_idle_fg", &WindowState::activitylist_color_idle_fg, 0, 0, white},
    {"activitylist_color_idle_bg", &WindowState::activitylist_color_idle_bg, white, 0, white},
    {"activitylist_color_up_fg", &WindowState::activitylist_color_up_fg, white, 0, white},
    {"activitylist_color_up_bg", &WindowState::activitylist_color_up_bg, red, 0, white},
    {"activitylist_color_dn_fg", &WindowState::activitylist_color_dn_fg, white, 0, white},
    {"activitylist_color_dn_bg", &WindowState::activitylist_color_dn_bg, blue, 0, white},
    {"tray_hint_given", &WindowState::tray_hint_given},
}};

bool isGeometry(const StateKey& key) {
    return key.key.starts_with("window_") && key.key != "window_state";
}

// The first two hold a row's icon and its position number.
constexpr std::array<std::int32_t, activityColumnCount> columnWidths = {
    360, 500, 700, 1500, 1500, 1000, 1500, 1300, 1300, 1300, 1000, 1200, 1500, 1500, 1500, 1200, 1000, 1100};

std::string columnKey(std::string_view quality, std::size_t column) {
    return std::string("activitylist_").append(quality).append("_").append(std::to_string(column));
}

void setPlace(WindowState& state, const StatePlace& place, std::int32_t value) {
    if (const auto* const numberPlace = std::get_if<std::int32_t WindowState::*>(&place)) {
        state.** numberPlace = value;
    } else {
        state.*std::get<bool WindowState::*>(place) = value != 0;
    }
}

std::string placeText(const WindowState& state, const StatePlace& place) {
    if (const auto* const numberPlace = std::get_if<std::int32_t WindowState::*>(&place)) {
        return std::to_string(state.**numberPlace);
    }
    return state.*std::get<bool WindowState::*>(place) ? "1" : "0";
}

// text, the whole of it a number, as a whole number from lowest to highest. Throws ConversionError otherwise.
std::int32_t numberWithin(std::string_view text, std::int32_t lowest, std::int32_t highest) {
    const double value = std::nearbyint(toNumber(text));
    if (value < lowest || value > highest) {
        throw ConversionError(text, "value for this key");
    }
    return static_cast<std::int32_t>(value);
}

// Reads values from a store and keeps a line about each that could not be used.
struct Reader {
    const StateStore& store;
    std::vector<std::string> problems = {};

    // The stored value as convert reads it; fallback where none is stored or convert refuses it.
    template <typename Value, typename Convert>
    Value read(const std::string& key, Value fallback, Convert convert) {
        try {
            const std::optional<std::string> stored = store.value(key);
            return stored ? static_cast<Value>(convert(*stored)) : fallback;
        } catch (const ConversionError& error) {
            problems.push_back("stored state: " + key + ": " + error.what());
            return fallback;
        }
    }
    template <typename Value>
    Value read(const std::string& key, Value fallback, std::int32_t lowest, std::int32_t highest) {
        return read(key, fallback,
                    [=](std::string_view text) { return numberWithin(text, lowest, highest); });
    }
};

// A minimised window lies far off the screen on some platforms.
bool hasUsableGeometry(const WindowState& state) {
    constexpr std::int32_t offScreen = -100;
    return state.window_left > offScreen && state.window_top > offScreen;
}

} // namespace

WindowState::WindowState() {
    for (const StateKey& key : stateKeys) {
        setPlace(*this, key.place, key.fallback);
    }
    for (std::size_t number = 0; number < columns.size(); ++number) {
        columns[number] = {.position = static_cast<std::int16_t>(number),
                           .autosize = number >= firstMovableColumn,
                           .width = columnWidths[number]};
    }
}

WindowStateReading loadWindowState(const StateStore& store, const WindowState& defaults) {
    WindowState state = defaults;
    Reader reader{store};
    for (const StateKey& key : stateKeys) {
        if (const auto* const number = std::get_if<std::int32_t WindowState::*>(&key.place)) {
            state.** number = reader.read(std::string(key.key), state.**number, key.lowest, key.highest);
        } else {
            bool& flag = state.*std::get<bool WindowState::*>(key.place);
            flag = reader.read(std::string(key.key), flag,
                               [](std::string_view text) { return toNumber(text) != 0; });
        }
    }
    for (std::size_t number = firstMovableColumn; number < activityColumnCount; ++number) {
        ActivityColumn& column = state.columns[number];
        column.autosize = reader.read(columnKey("autosize", number), column.autosize, toBoolean);
        column.position = reader.read(columnKey("columnorder", number), column.position, firstMovableColumn,
                                      activityColumnCount - 1);
        column.width = reader.read(columnKey("width", number), column.width, 0, longest);
    }
    return {.state = state, .problems = std::move(reader.problems)};
}

void saveWindowState(StateStore& store, const WindowState& state) {
    for (const StateKey& key : stateKeys) {
        if (hasUsableGeometry(state) || !isGeometry(key)) {
            store.setValue(key.key, placeText(state, key.place));
        }
    }
    for (std::size_t number = 0; number < activityColumnCount; ++number) {
        const ActivityColumn& column = state.columns[number];
        store.setValue(columnKey("autosize", number), column.autosize ? "True" : "False");
        store.setValue(columnKey("columnorder", number), std::to_string(column.position));
        store.setValue(columnKey("width", number), std::to_string(column.width));
    }
}

std::array<std::size_t, activityColumnCount> activityColumnOrder(const WindowState& state) {
    std::array<std::size_t, activityColumnCount> order{};
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {},
                             [&state](std::size_t number) { return state.columns[number].position; });
    return order;
}

} // namespace corvel

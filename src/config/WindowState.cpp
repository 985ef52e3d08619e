#include "config/WindowState.h"

#include "common/Errors.h"
#include "common/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <variant>

namespace corvel {

namespace {

using Place = std::variant<std::int32_t WindowState::*, bool WindowState::*>;

struct StateKey {
    std::string_view key;
    std::int32_t fallback;
    Place place;
    std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    bool isGeometry = false;
};

// A million pixels: more than any desktop has, and far from where sums of lengths would overflow.
constexpr std::int32_t longest = 15'000'000;
constexpr std::int32_t white = 0xFFFFFF;
constexpr std::int32_t red = 0x0000FF;
constexpr std::int32_t blue = 0xFF0000;

constexpr StateKey edge(std::string_view key, Place place) {
    return {.key = key,
            .fallback = 0,
            .place = place,
            .lowest = -longest,
            .highest = longest,
            .isGeometry = true};
}

constexpr StateKey size(std::string_view key, Place place) {
    return {.key = key, .fallback = 0, .place = place, .lowest = 1, .highest = longest, .isGeometry = true};
}

constexpr StateKey number(std::string_view key, std::int32_t fallback, Place place, std::int32_t lowest,
                          std::int32_t highest) {
    return {.key = key, .fallback = fallback, .place = place, .lowest = lowest, .highest = highest};
}

constexpr StateKey flag(std::string_view key, Place place) {
    return {.key = key, .fallback = 0, .place = place};
}

constexpr StateKey color(std::string_view key, std::int32_t fallback, Place place) {
    return number(key, fallback, place, 0, white);
}

// In the order in which they are written; the columns come between the two tables.
constexpr std::array<StateKey, 11> windowKeys = {{
    number("window_state", 2, &WindowState::window_state, 0, 2),
    edge("window_top", &WindowState::window_top),
    edge("window_left", &WindowState::window_left),
    size("window_height", &WindowState::window_height),
    size("window_width", &WindowState::window_width),
    number("splitbar_left_wide", 1500, &WindowState::splitbar_left_wide, 0, longest),
    number("splitbar_left_narrow", 1500, &WindowState::splitbar_left_narrow, 0, longest),
    number("selected_tab", 1, &WindowState::selected_tab, 1, 8),
    flag("always_on_top", &WindowState::always_on_top),
    flag("show_sites_list", &WindowState::show_sites_list),
    number("sites_list_viewmode", 3, &WindowState::sites_list_viewmode, 0, 3),
}};

constexpr std::array<StateKey, 8> activityKeys = {{
    flag("activitylist_use_colors", &WindowState::activitylist_use_colors),
    color("activitylist_color_idle_fg", 0, &WindowState::activitylist_color_idle_fg),
    color("activitylist_color_idle_bg", white, &WindowState::activitylist_color_idle_bg),
    color("activitylist_color_up_fg", white, &WindowState::activitylist_color_up_fg),
    color("activitylist_color_up_bg", red, &WindowState::activitylist_color_up_bg),
    color("activitylist_color_dn_fg", white, &WindowState::activitylist_color_dn_fg),
    color("activitylist_color_dn_bg", blue, &WindowState::activitylist_color_dn_bg),
    flag("tray_hint_given", &WindowState::tray_hint_given),
}};

// The first two hold a row's icon and its position number.
constexpr std::array<std::int32_t, activityColumnCount> columnWidths = {
    360, 500, 700, 1500, 1500, 1000, 1500, 1300, 1300, 1300, 1000, 1200, 1500, 1500, 1500, 1200, 1000, 1100};

std::string columnKey(std::string_view quality, std::size_t column) {
    return std::string("activitylist_").append(quality).append("_").append(std::to_string(column));
}

void setPlace(WindowState& state, const Place& place, std::int32_t value) {
    if (const auto* const numberPlace = std::get_if<std::int32_t WindowState::*>(&place)) {
        state.** numberPlace = value;
    } else {
        state.*std::get<bool WindowState::*>(place) = value != 0;
    }
}

std::string placeText(const WindowState& state, const Place& place) {
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

bool isOn(std::string_view text) {
    return toNumber(text) != 0;
}

// Reads values from a store and keeps a line about each that could not be used.
class Reader {
  public:
    explicit Reader(const StateStore& store) : store_(store) {}

    // The stored value as convert reads it; nothing where none is stored or convert refuses it.
    template <typename Convert>
    auto read(std::string_view key, Convert convert) -> std::optional<decltype(convert(std::string_view()))> {
        const std::optional<std::string> stored = store_.value(key);
        if (!stored) {
            return std::nullopt;
        }
        try {
            return convert(*stored);
        } catch (const ConversionError& error) {
            problems_.push_back(std::string("stored state: ").append(key).append(": ").append(error.what()));
            return std::nullopt;
        }
    }

    void readKey(const StateKey& key, WindowState& state) {
        const bool isNumber = std::holds_alternative<std::int32_t WindowState::*>(key.place);
        const auto value = read(key.key, [&key, isNumber](std::string_view text) -> std::int32_t {
            return isNumber ? numberWithin(text, key.lowest, key.highest)
                            : static_cast<std::int32_t>(isOn(text));
        });
        if (value) {
            setPlace(state, key.place, *value);
        }
    }

    void readColumn(std::size_t number, ActivityColumn& column) {
        column.autosize = read(columnKey("autosize", number), toBoolean).value_or(column.autosize);
        const auto position = read(columnKey("columnorder", number), [](std::string_view text) {
            return numberWithin(text, firstMovableColumn, activityColumnCount - 1);
        });
        column.position = static_cast<std::int16_t>(position.value_or(column.position));
        const auto width = read(columnKey("width", number),
                                [](std::string_view text) { return numberWithin(text, 0, longest); });
        column.width = width.value_or(column.width);
    }

    std::vector<std::string> takeProblems() { return std::move(problems_); }

  private:
    const StateStore& store_;
    std::vector<std::string> problems_;
};

// A minimised window lies far off the screen on some platforms.
bool hasUsableGeometry(const WindowState& state) {
    constexpr std::int32_t offScreen = -100;
    return state.window_left > offScreen && state.window_top > offScreen;
}

void saveColumn(std::size_t number, const ActivityColumn& column, StateStore& store) {
    store.setValue(columnKey("autosize", number), column.autosize ? "True" : "False");
    store.setValue(columnKey("columnorder", number), std::to_string(column.position));
    store.setValue(columnKey("width", number), std::to_string(column.width));
}

} // namespace

WindowState::WindowState() {
    for (const StateKey& key : windowKeys) {
        setPlace(*this, key.place, key.fallback);
    }
    for (const StateKey& key : activityKeys) {
        setPlace(*this, key.place, key.fallback);
    }
    for (std::size_t number = 0; number < columns.size(); ++number) {
        columns[number] = {.position = static_cast<std::int16_t>(number),
                           .autosize = number >= firstMovableColumn,
                           .width = columnWidths[number]};
    }
}

WindowStateReading loadWindowState(const StateStore& store, const WindowState& defaults) {
    WindowStateReading reading{.state = defaults, .problems = {}};
    Reader reader(store);
    for (const StateKey& key : windowKeys) {
        reader.readKey(key, reading.state);
    }
    for (std::size_t number = firstMovableColumn; number < activityColumnCount; ++number) {
        reader.readColumn(number, reading.state.columns[number]);
    }
    for (const StateKey& key : activityKeys) {
        reader.readKey(key, reading.state);
    }
    reading.problems = reader.takeProblems();
    return reading;
}

void saveWindowState(StateStore& store, const WindowState& state) {
    const bool savesGeometry = hasUsableGeometry(state);
    const auto save = [&](const StateKey& key) {
        if (savesGeometry || !key.isGeometry) {
            store.setValue(key.key, placeText(state, key.place));
        }
    };
    std::ranges::for_each(windowKeys, save);
    for (std::size_t number = 0; number < activityColumnCount; ++number) {
        saveColumn(number, state.columns[number], store);
    }
    std::ranges::for_each(activityKeys, save);
}

std::array<std::size_t, activityColumnCount> activityColumnOrder(const WindowState& state) {
    std::array<std::size_t, activityColumnCount> order{};
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {},
                             [&state](std::size_t number) { return state.columns[number].position; });
    return order;
}

} // namespace corvel

#include "config/Settings.h"

#include "common/Errors.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "common/TextEncoding.h"
#include "config/Files.h"
#include "config/PlatformFiles.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvel {

namespace {

// A key and how its value, UTF-8, is read. A reader throws ConversionError for a value that cannot be used.
struct SettingsKey {
    std::string_view key;
    void (*read)(Settings& settings, std::string_view value);
};

template <auto member>
void readText(Settings& settings, std::string_view value) {
    settings.*member = value;
}

template <auto member>
void readSwitch(Settings& settings, std::string_view value) {
    settings.*member = leadingNumber(value) != 0;
}

// A value without a separator defines nothing; a further separator belongs to the command.
template <auto member>
void readMenuEntry(Settings& settings, std::string_view value) {
    const std::vector<std::string_view> pieces = split(value, fieldSeparator, 2);
    if (pieces.size() == 2) {
        (settings.*member).push_back({std::string(trim(pieces[0])), std::string(trim(pieces[1]))});
    }
}

void readPort(Settings& settings, std::string_view value) {
    if (!hasLeadingNumber(value)) {
        throw ConversionError(value, "number");
    }
    settings.ssl_tunnel_port = toInt32(value);
}

void readFontSize(Settings& settings, std::string_view value) {
    const double size = std::abs(std::floor(toNumber(value)));
    constexpr double largest = 1000;
    if (size < 1 || size > largest) {
        throw ConversionError(value, "font size");
    }
    settings.textbox_fontsize = static_cast<int>(size);
}

void readReplacement(Settings& settings, std::string_view value) {
    const auto* const next =
        std::find_if_not(value.begin() + (value.empty() ? 0 : 1), value.end(), continuesCharacter);
    settings.site_nuke_replace_spaces.assign(value.begin(), next);
}

constexpr std::array<SettingsKey, 20> settingsKeys = {{
    {"textbox_fontname", readText<&Settings::textbox_fontname>},
    {"textbox_fontsize", readFontSize},
    {"ssl_tunnel_host", readText<&Settings::ssl_tunnel_host>},
    {"ssl_tunnel_port", readPort},
    {"show_trayicon", readSwitch<&Settings::show_trayicon>},
    {"minimize_to_tray", readSwitch<&Settings::minimize_to_tray>},
    {"listing_merge_blanks", readSwitch<&Settings::listing_merge_blanks>},
    {"mask_passwords", readSwitch<&Settings::mask_passwords>},
    {"browser_refresh_after_change", readSwitch<&Settings::browser_refresh_after_change>},
    {"site_nuke_syntax", readText<&Settings::site_nuke_syntax>},
    {"site_nuke_replace_spaces", readReplacement},
    {"window_caption_online", readText<&Settings::window_caption_online>},
    {"window_caption_offline", readText<&Settings::window_caption_offline>},
    {"trayicon_text_online", readText<&Settings::trayicon_text_online>},
    {"trayicon_text_offline", readText<&Settings::trayicon_text_offline>},
    {"menu_tray", readMenuEntry<&Settings::menu_tray>},
    {"menu_browser", readMenuEntry<&Settings::menu_browser>},
    {"menu_userlist", readMenuEntry<&Settings::menu_userlist>},
    {"menu_grouplist", readMenuEntry<&Settings::menu_grouplist>},
    {"menu_activity", readMenuEntry<&Settings::menu_activity>},
}};

void apply(const EntryLine& entry, Settings& settings) {
    if (const auto* const found = std::ranges::find(settingsKeys, entry.key, &SettingsKey::key);
        found != settingsKeys.end()) {
        found->read(settings, entry.value);
    } else if (const auto* const image = std::ranges::find(imageKeys, entry.key, &ImageKey::key);
               image != imageKeys.end()) {
        settings.images[static_cast<std::size_t>(image - imageKeys.begin())] = entry.value;
    } else if (entry.key.starts_with("color_")) {
        settings.colors[entry.key] = toUpper(entry.value).starts_with("&H") ? entry.value : "0";
    }
}

struct SamplePlace {
    std::int32_t WindowState::*text;
    std::int32_t WindowState::*background;
};

constexpr std::array<SamplePlace, 3> samplePlaces = {{
    {&WindowState::activitylist_color_idle_fg, &WindowState::activitylist_color_idle_bg},
    {&WindowState::activitylist_color_up_fg, &WindowState::activitylist_color_up_bg},
    {&WindowState::activitylist_color_dn_fg, &WindowState::activitylist_color_dn_bg},
}};

} // namespace

SettingsReading parseSettings(const std::vector<std::string>& lines) {
    const bool isUtf8 = std::ranges::all_of(lines, isValidUtf8);
    const auto textOf = [isUtf8](const std::string& bytes) { return isUtf8 ? bytes : utf8FromSystem(bytes); };
    SettingsReading reading;
    for (const std::string& line : lines) {
        // A byte order mark is one before the bytes are taken for anything else.
        const auto entry = parseEntryLine(line, Comments::semicolonAndHash);
        if (!entry) {
            continue;
        }
        try {
            apply({.key = textOf(entry->key), .value = textOf(entry->value)}, reading.settings);
        } catch (const ConversionError& error) {
            reading.problems.push_back(
                std::string("settings.ini: ").append(entry->key).append(": ").append(error.what()));
        }
    }
    return reading;
}

SettingsReading readSettings(const std::string& path) {
    const FileContent content = readFile(path);
    if (content.state == FileContent::State::unknown) {
        return {.settings = {}, .problems = {"settings.ini can't be read: " + content.reason}};
    }
    if (content.bytes.find('\0') != std::string::npos) { // no key is found in UTF-16
        return {.settings = {},
                .problems = {"settings.ini can't be read: it is not in UTF-8, but perhaps in UTF-16"}};
    }
    return parseSettings(linesOf(content.bytes));
}

std::string_view columnName(const ColumnRow& row) {
    return activityColumnHeaders[row.id - firstMovableColumn];
}

SettingsForm settingsForm(const WindowState& state, const Settings& settings) {
    SettingsForm form;
    std::size_t row = 0;
    for (const std::size_t id : activityColumnOrder(state)) {
        if (id >= firstMovableColumn) {
            const ActivityColumn& column = state.columns[id];
            form.lvwAL[row++] = {.id = id, .show = column.shown, .autosize = column.autosize};
        }
    }
    form.chkALUseColors = state.activitylist_use_colors;
    for (std::size_t i = 0; i < samplePlaces.size(); ++i) {
        form.lblSampleColors[i] = {.text = state.*samplePlaces[i].text,
                                   .background = state.*samplePlaces[i].background};
    }
    form.txtSSLHost = settings.ssl_tunnel_host;
    form.txtSSLPort = std::to_string(settings.ssl_tunnel_port);
    form.chkShowTrayIcon = settings.show_trayicon;
    form.chkMinimizeToTray = settings.minimize_to_tray;
    return form;
}

std::size_t moveColumn(SettingsForm& form, std::size_t row, int step) {
    const std::size_t target = row + static_cast<std::size_t>(step);
    if (row >= form.lvwAL.size() || target >= form.lvwAL.size()) {
        return row;
    }
    std::swap(form.lvwAL[row], form.lvwAL[target]);
    return target;
}

WindowState savedSettings(const SettingsForm& form, WindowState state) {
    for (std::size_t row = 0; row < form.lvwAL.size(); ++row) {
        ActivityColumn& column = state.columns[form.lvwAL[row].id];
        column.position = static_cast<std::int16_t>(row + firstMovableColumn);
        column.shown = form.lvwAL[row].show;
        column.autosize = form.lvwAL[row].autosize;
    }
    state.activitylist_use_colors = form.chkALUseColors;
    for (std::size_t i = 0; i < samplePlaces.size(); ++i) {
        state.*samplePlaces[i].text = form.lblSampleColors[i].text;
        state.*samplePlaces[i].background = form.lblSampleColors[i].background;
    }
    return state;
}

} // namespace corvel

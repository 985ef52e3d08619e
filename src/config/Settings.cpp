#include "config/Settings.h"

#include "common/Errors.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "common/TextEncoding.h"
#include "config/EntryLine.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace corvel {

namespace {

struct SettingsKey {
    std::string_view key;
    void (*read)(Settings&, const std::string&);
};

template <auto Member>
void readText(Settings& settings, const std::string& value) {
    settings.*Member = value;
}

template <auto Member>
void readSwitch(Settings& settings, const std::string& value) {
    settings.*Member = toSwitch(value);
}

// Caption and command stand on both sides of the first separator; a value without one defines nothing.
template <auto Member>
void readMenuEntry(Settings& settings, const std::string& value) {
    const std::vector<std::string_view> pieces = split(value, fieldSeparator, 2);
    if (pieces.size() == 2) {
        (settings.*Member).push_back({std::string(trim(pieces[0])), std::string(trim(pieces[1]))});
    }
}

void readFontSize(Settings& settings, const std::string& value) {
    if (!hasLeadingNumber(value)) {
        throw ConversionError(value, "number");
    }
    const double size = std::abs(std::floor(leadingNumber(value)));
    constexpr double largest = 1000;
    if (size < 1 || size > largest) {
        throw ConversionError(value, "font size");
    }
    settings.textbox_fontsize = static_cast<int>(size);
}

void readTunnelPort(Settings& settings, const std::string& value) {
    if (!value.empty() && !hasLeadingNumber(value)) {
        throw ConversionError(value, "number");
    }
    settings.ssl_tunnel_port = toInt32(value);
}

// The first character alone is kept.
void readReplacement(Settings& settings, const std::string& value) {
    std::size_t size = value.empty() ? 0 : 1;
    while (size < value.size() && (static_cast<unsigned char>(value[size]) & 0xC0U) == 0x80) {
        ++size;
    }
    settings.site_nuke_replace_spaces = value.substr(0, size);
}

constexpr std::array<SettingsKey, 18> keys = {{
    {"textbox_fontname", readText<&Settings::textbox_fontname>},
    {"textbox_fontsize", readFontSize},
    {"ssl_tunnel_host", readText<&Settings::ssl_tunnel_host>},
    {"ssl_tunnel_port", readTunnelPort},
    {"show_trayicon", readSwitch<&Settings::show_trayicon>},
    {"minimize_to_tray", readSwitch<&Settings::minimize_to_tray>},
    {"listing_merge_blanks", readSwitch<&Settings::listing_merge_blanks>},
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

std::string normalisedColor(const std::string& value) {
    return toUpper(value).starts_with("&H") ? value : "0";
}

void setValue(std::vector<std::pair<std::string, std::string>>& values, const std::string& key,
              std::string value) {
    const auto found = std::ranges::find(values, key, &std::pair<std::string, std::string>::first);
    if (found == values.end()) {
        values.emplace_back(key, std::move(value));
    } else {
        found->second = std::move(value);
    }
}

void apply(const EntryLine& entry, Settings& settings) {
    const auto* const found = std::ranges::find(keys, entry.key, &SettingsKey::key);
    if (found != keys.end()) {
        found->read(settings, entry.value);
    } else if (std::ranges::find(imageKeys, entry.key) != imageKeys.end()) {
        setValue(settings.images, entry.key, entry.value);
    } else if (entry.key.starts_with("color_")) {
        setValue(settings.colors, entry.key, normalisedColor(entry.value));
    }
}

} // namespace

SettingsReading parseSettings(const std::vector<std::string>& lines) {
    const TextEncoding encoding =
        std::ranges::all_of(lines, isValidUtf8) ? TextEncoding::utf8 : TextEncoding::windows1252;
    SettingsReading reading;
    for (const std::string& line : lines) {
        const auto entry = parseEntryLine(toUtf8(line, encoding), Comments::semicolonAndHash);
        if (!entry) {
            continue;
        }
        try {
            apply(*entry, reading.settings);
        } catch (const ConversionError& error) {
            reading.problems.push_back("settings.ini: " + entry->key + ": " + error.what());
        }
    }
    return reading;
}

} // namespace corvel

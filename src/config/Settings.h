#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvel {

// One entry of a custom menu.
struct MenuEntry {
    std::string caption;
    std::string command;

    bool operator==(const MenuEntry&) const = default;
};

// What settings.ini says. Every member is named as its key and starts with its default. Texts are UTF-8.
struct Settings {
    std::string textbox_fontname;        // empty: the platform's fixed-width font
    std::optional<int> textbox_fontsize; // in points; nothing: the platform's size
    std::string ssl_tunnel_host;
    std::int32_t ssl_tunnel_port = 0;
    bool show_trayicon = false;
    bool minimize_to_tray = false;
    bool listing_merge_blanks = false; // runs of blanks between the date fields of a listing count as one
    std::string site_nuke_syntax;
    std::string site_nuke_replace_spaces = " "; // one character
    std::string window_caption_online;
    std::string window_caption_offline;
    std::string trayicon_text_online;
    std::string trayicon_text_offline;

    // Replacement images by key, such as "tabicon_console"; the last value of a key counts.
    std::vector<std::pair<std::string, std::string>> images;
    // The values of the keys that begin with "color_", "0" where the value is no colour.
    std::vector<std::pair<std::string, std::string>> colors;

    std::vector<MenuEntry> menu_tray;
    std::vector<MenuEntry> menu_browser;
    std::vector<MenuEntry> menu_userlist;
    std::vector<MenuEntry> menu_grouplist;
    std::vector<MenuEntry> menu_activity;
};

// The keys of the replacement images, in the order in which they are applied.
inline constexpr std::array<const char*, 18> imageKeys = {
    "trayicon_idle",          "trayicon_up",       "trayicon_down",
    "trayicon_both",          "trayicon_offline",  "activityicon_idle",
    "activityicon_up",        "activityicon_down", "sitesicon_connected",
    "sitesicon_disconnected", "tabicon_console",   "tabicon_activity",
    "tabicon_browser",        "tabicon_stats",     "tabicon_users",
    "tabicon_groups",         "tabicon_settings",  "tabicon_results",
};

// Settings read, and one line about each value that was none; its default stands instead.
struct SettingsReading {
    Settings settings;
    std::vector<std::string> problems;
};

// lines: of a settings.ini, UTF-8 or, where they are not valid UTF-8 as a whole, Windows-1252.
SettingsReading parseSettings(const std::vector<std::string>& lines);

} // namespace corvel

#pragma once

#include "config/WindowState.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// One entry of a custom menu; both texts are templates.
struct MenuEntry {
    std::string caption;
    std::string command;

    bool operator==(const MenuEntry&) const = default;
};

// The lists of images in which a picture can be replaced.
enum class ImageList { tray, activity, sites, tabs };

// A key of settings.ini that replaces one picture, and the place of that picture.
struct ImageKey {
    std::string_view key;
    ImageList list;
    int index; // from 1
};

// In the order in which the pictures are replaced at start-up.
inline constexpr std::array<ImageKey, 18> imageKeys = {{
    {"trayicon_idle", ImageList::tray, 1},
    {"trayicon_up", ImageList::tray, 2},
    {"trayicon_down", ImageList::tray, 3},
    {"trayicon_both", ImageList::tray, 4},
    {"trayicon_offline", ImageList::tray, 5},
    {"activityicon_idle", ImageList::activity, 1},
    {"activityicon_up", ImageList::activity, 2},
    {"activityicon_down", ImageList::activity, 3},
    {"sitesicon_connected", ImageList::sites, 1},
    {"sitesicon_disconnected", ImageList::sites, 2},
    {"tabicon_console", ImageList::tabs, 1},
    {"tabicon_activity", ImageList::tabs, 2},
    {"tabicon_browser", ImageList::tabs, 3},
    {"tabicon_stats", ImageList::tabs, 4},
    {"tabicon_users", ImageList::tabs, 5},
    {"tabicon_groups", ImageList::tabs, 6},
    {"tabicon_settings", ImageList::tabs, 7},
    {"tabicon_results", ImageList::tabs, 8},
}};

// What settings.ini says: a member per key and named as it, each starting with its default. Texts are UTF-8.
struct Settings {
    std::string textbox_fontname;        // empty: the platform's fixed-width font
    std::optional<int> textbox_fontsize; // in points, 1 to 1000; nothing: the platform's size
    std::string ssl_tunnel_host;
    std::int32_t ssl_tunnel_port = 0;
    bool show_trayicon = false;
    bool minimize_to_tray = false;
    bool listing_merge_blanks = false; // runs of blanks between the date fields of a listing count as one
    bool mask_passwords = false;       // of accounts, wherever a command is shown
    bool browser_refresh_after_change = false; // a directory is listed again after a change in it
    std::string site_nuke_syntax;
    std::string site_nuke_replace_spaces = " "; // one character, or none where the key has no value
    std::string window_caption_online;
    std::string window_caption_offline;
    std::string trayicon_text_online;
    std::string trayicon_text_offline;

    std::vector<MenuEntry> menu_tray;
    std::vector<MenuEntry> menu_browser;
    std::vector<MenuEntry> menu_userlist;
    std::vector<MenuEntry> menu_grouplist;
    std::vector<MenuEntry> menu_activity;

    std::array<std::string, imageKeys.size()>
        images; // file names, as in imageKeys; empty: the built-in picture
    std::map<std::string, std::string>
        colors; // by key "color_...": as written where it begins like a colour ("&H"), else "0"

    bool operator==(const Settings&) const = default;
};

// Settings, and a line (UTF-8) for the person about each value that could not be used, or about the file; the
// default, or an earlier value of that key, stands instead.
struct SettingsReading {
    Settings settings;
    std::vector<std::string> problems;
};

// lines: of a settings.ini, UTF-8 or, where they are not valid UTF-8 as a whole, in the character set of the
// system (utf8FromSystem). Lines and keys that it does not know are passed over.
SettingsReading parseSettings(const std::vector<std::string>& lines);

// Reads the settings.ini at path (UTF-8); without one, every setting keeps its default.
SettingsReading readSettings(const std::string& path);

// A column of the activity list as the settings dialog shows it. Its row says where it stands.
struct ColumnRow {
    std::size_t id = firstMovableColumn;
    bool show = true;
    bool autosize = true;

    bool operator==(const ColumnRow&) const = default;
};

// The header of the column.
std::string_view columnName(const ColumnRow& row);

// Red in the low byte, as the store has them.
struct SampleColors {
    std::int32_t text = 0;
    std::int32_t background = 0;

    bool operator==(const SampleColors&) const = default;
};

// The settings dialog as a record, a member per control. Row r of lvwAL is position r + firstMovableColumn.
struct SettingsForm {
    std::array<ColumnRow, activityColumnCount - firstMovableColumn> lvwAL = {};
    bool chkALUseColors = false;
    std::array<SampleColors, 3> lblSampleColors = {}; // of a connection that idles, uploads, downloads
    // Shown only: settings.ini is for the person to edit.
    std::string txtSSLHost;
    std::string txtSSLPort;
    bool chkShowTrayIcon = false;
    bool chkMinimizeToTray = false;

    bool operator==(const SettingsForm&) const = default;
};

// What the dialog opens with.
SettingsForm settingsForm(const WindowState& state, const Settings& settings);

// Moves the column of the row one place up (step -1) or down (step 1). Gives the row in which it stands
// then; past either end nothing moves.
std::size_t moveColumn(SettingsForm& form, std::size_t row, int step);

// state as the dialog leaves it: the columns' places, whether they are shown and size themselves, and the
// colours.
WindowState savedSettings(const SettingsForm& form, WindowState state);

} // namespace corvel

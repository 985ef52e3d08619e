// The bytes of a settings.ini.
#include "config/Settings.h"

#include "common/TextEncoding.h"
#include "config/Files.h"
#include "Fuzz.h"
#include "menus/mdlMenus.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace corvel::fuzz {

namespace {

constexpr std::array menus = {&Settings::menu_tray, &Settings::menu_browser, &Settings::menu_userlist,
                              &Settings::menu_grouplist, &Settings::menu_activity};
constexpr std::array texts = {&Settings::textbox_fontname,      &Settings::ssl_tunnel_host,
                              &Settings::site_nuke_syntax,      &Settings::site_nuke_replace_spaces,
                              &Settings::window_caption_online, &Settings::window_caption_offline,
                              &Settings::trayicon_text_online,  &Settings::trayicon_text_offline};

void checkTexts(const SettingsReading& reading) {
    const Settings& settings = reading.settings;
    require(std::ranges::all_of(texts, [&](auto member) { return isValidUtf8(settings.*member); }) &&
                std::ranges::all_of(settings.images, isValidUtf8) &&
                std::ranges::all_of(reading.problems, isValidUtf8),
            "what is read from a file is UTF-8");
    require(characterCount(settings.site_nuke_replace_spaces) <= 1, "a blank is replaced by one character");
    require(!settings.textbox_fontsize ||
                (*settings.textbox_fontsize >= 1 && *settings.textbox_fontsize <= 1000),
            "a font can be seen");
    for (const auto menu : menus) {
        for (const MenuEntry& entry : settings.*menu) {
            require(isValidUtf8(entry.caption) && isValidUtf8(entry.command), "an entry is UTF-8");
        }
        const std::vector<MenuItem> items = expandMenu(settings.*menu, {{"name", "x"}});
        require(items.size() == (settings.*menu).size(), "a menu has all of its entries");
    }
    for (const auto& [key, color] : settings.colors) {
        require(key.starts_with("color_") && (color == "0" || color.size() >= 2), "a colour is one");
    }
}

// The last line with a key counts, and menus have all of theirs: so the lines twice give the same once more.
void checkTwice(const SettingsReading& once, std::vector<std::string> lines) {
    const std::size_t count = lines.size();
    lines.resize(2 * count);
    std::copy_n(lines.begin(), count, lines.begin() + static_cast<std::ptrdiff_t>(count));
    SettingsReading twice = parseSettings(lines);
    require(twice.problems.size() == 2 * once.problems.size(), "what is wrong is told for each line");
    for (const auto menu : menus) {
        require((twice.settings.*menu).size() == 2 * (once.settings.*menu).size(),
                "a line of a menu is an entry");
        (twice.settings.*menu).resize((once.settings.*menu).size());
    }
    require(twice.settings == once.settings, "the last line counts");
}

void checkComments(std::vector<std::string> lines) {
    for (std::string& line : lines) {
        line.insert(0, " ;");
    }
    const SettingsReading reading = parseSettings(lines);
    require(reading.settings == Settings() && reading.problems.empty(), "a comment sets nothing");
}

// A file is read as its lines are, but for one that is in another encoding.
void checkFile(std::string_view bytes, const SettingsReading& reading) {
    const SettingsReading file = readSettings(fileOf(bytes));
    if (bytes.find('\0') == std::string_view::npos) {
        require(file.settings == reading.settings && file.problems == reading.problems,
                "a file is what is in it");
    } else {
        require(file.problems.size() == 1, "a file that cannot be read is told");
    }
    require(readSettings("/proc/self").problems.size() == 1, "and so is what is none");
}

void checkForm(const Settings& settings) {
    WindowState state;
    SettingsForm form = settingsForm(state, settings);
    const std::size_t last = form.lvwAL.size() - 1;
    require(moveColumn(form, 0, -1) == 0 && moveColumn(form, last, 1) == last, "no column leaves the list");
    require(moveColumn(form, 0, 1) == 1 && moveColumn(form, 1, -1) == 0, "a column comes back");
    require(settingsForm(savedSettings(form, state), settings) == form, "what is saved is shown again");
    require(std::ranges::none_of(form.lvwAL, [](const ColumnRow& row) { return columnName(row).empty(); }),
            "every column has a name");
}

} // namespace

void check(std::string_view bytes) {
    const std::vector<std::string> lines = linesOf(bytes);
    const SettingsReading reading = parseSettings(lines);
    require(reading.problems.size() <= lines.size(), "a line has one problem at most");
    checkTexts(reading);
    checkTwice(reading, lines);
    checkComments(lines);
    checkForm(reading.settings);
    if (bytes.size() % 16 == 0) { // it takes as long as all the rest
        checkFile(bytes, reading);
    }
}

void work(std::string_view bytes) {
    parseSettings(linesOf(bytes));
}

} // namespace corvel::fuzz

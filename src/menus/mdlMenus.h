#pragma once

#include "common/Text.h"
#include "config/Settings.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The custom menus, with the numbers of their kinds.
enum class MenuKind { tray = 1, browser = 2, userList = 3, groupList = 4, activity = 5 };

// An entry of a menu that opens: both texts expanded, UTF-8.
struct MenuItem {
    std::string caption;
    std::string command;
    bool isSeparator = false; // its caption is "-" as defined; a value that happens to be "-" makes none

    bool operator==(const MenuItem&) const = default;
};

std::vector<MenuItem> expandMenu(const std::vector<MenuEntry>& entries, const MenuVariables& variables);

// A command line, read: its first word names the action, behind a "%" if the person is to be asked first.
struct MenuCommand {
    std::string action = {};
    bool asksFirst = false;
    std::string argument = {}; // all that stands behind the blank which ends the word

    bool operator==(const MenuCommand&) const = default;
};
MenuCommand parseMenuCommand(std::string_view line);

// What "exec" opens: the first word of its argument, or what stands between two double quotes there, blanks
// included.
std::string_view execTarget(std::string_view argument);

// What an entry that asks first asks. Line breaks and the like in argument show as symbols.
std::string menuQuestion(std::string_view argument);

} // namespace corvel

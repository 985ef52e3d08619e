#pragma once

#include "common/Text.h"
#include "config/Settings.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The custom menus, with the numbers of their kinds.
enum class MenuKind { tray = 1, browser = 2, userList = 3, groupList = 4, activity = 5 };

// A command line, read: its first word names the action, behind a "%" if the person is to be asked first.
struct MenuCommand {
    std::string action = {};
    bool asksFirst = false;
    std::string argument = {}; // all that stands behind the blank which ends the word, UTF-8
    // What "exec" opens, the first word or what stands between two double quotes there, blanks included; the
    // pattern of "kill".
    std::string target = {};
    // What the author wrote before the first value does not say what kind of target it is, be the values what
    // they may.
    bool isServersChoice = false;
    std::string problem = {}; // why it is not carried out, behind "since it"; empty for none

    bool operator==(const MenuCommand&) const = default;
};

// The line of an entry, read before the values of variables, which a server chooses, are put in: so no value
// names the action or ends a target between quotes. What reaches another program has to be one argument
// beneath what the author wrote: no control character, for "exec" no way up by "..", no option and no address
// of the value's own, for "kill" no wildcard and no empty value.
MenuCommand menuCommand(std::string_view line, const MenuVariables& variables);

// An entry of a menu that opens: both texts expanded, UTF-8, and what it does.
struct MenuItem {
    std::string caption;
    std::string command;
    bool isSeparator = false; // its caption is "-" as defined; a value that happens to be "-" makes none
    MenuCommand action = {};

    bool operator==(const MenuItem&) const = default;
};

std::vector<MenuItem> expandMenu(const std::vector<MenuEntry>& entries, const MenuVariables& variables);

// What an entry that asks first asks. Line breaks and the like in argument show as symbols.
std::string menuQuestion(std::string_view argument);

} // namespace corvel

#pragma once

#include "common/Template.h"
#include "config/Settings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The custom menus, with the numbers that ShowCustomMenu takes.
enum class MenuKind { tray = 1, browser = 2, userList = 3, groupList = 4, activity = 5 };

// The kind of a number; nothing for any number but 1 to 5.
std::optional<MenuKind> menuKind(int number);

// The entries that settings.ini has for a menu, in the order of its lines.
const std::vector<MenuEntry>& menuEntries(const Settings& settings, MenuKind kind);

// The texts of the row that is selected in a list, UTF-8; empty where none is. Numbers are plain decimal.
struct BrowserMenuRow {
    std::string pwd; // the current directory, also without a row
    std::string name;
    std::string user;
    std::string group;
};
struct UserMenuRow {
    std::string name;
    std::string uid;
    std::string group;
};
struct GroupMenuRow {
    std::string name;
    std::string gid;
};
struct ConnectionMenuRow {
    std::string cid;
    std::string user;
    std::string group;
    std::string ident;
    std::string clientip;
    std::string pwd;
};

// The variables of a menu. The tray's has none.
MenuVariables menuVariables(const BrowserMenuRow& row);
MenuVariables menuVariables(const UserMenuRow& row); // "user" is another name for "name"
MenuVariables menuVariables(const GroupMenuRow& row);
MenuVariables menuVariables(const ConnectionMenuRow& row);

// An entry of a menu that opens: both texts expanded, UTF-8.
struct MenuItem {
    std::string caption;
    std::string command;
    bool isSeparator = false; // its caption is "-" as defined; a value that happens to be "-" makes none

    bool operator==(const MenuItem&) const = default;
};

std::vector<MenuItem> expandMenu(const std::vector<MenuEntry>& entries, const MenuVariables& variables);

// What a command line can do. nothing: what is no action.
enum class MenuAction { nothing, null, exec, exit, chmod, nuke, copyUser, chattr, ftp, copy, kill };

// A command line, read: its first word names the action, behind a "%" if the person is to be asked first.
struct MenuCommand {
    MenuAction action = MenuAction::nothing;
    bool asksFirst = false;
    std::string argument = {}; // the other words with single blanks between them: runs of blanks survive

    bool operator==(const MenuCommand&) const = default;
};
MenuCommand parseMenuCommand(std::string_view line);

// What "exec" opens: the first word of its argument, or what stands between two double quotes there, blanks
// included.
std::string_view execTarget(std::string_view argument);

// The pattern that "kill" looks for: all of its argument, trimmed and lower-cased.
std::string killPattern(std::string_view argument);

// What an entry that asks first asks. Line breaks and the like in argument show as symbols.
std::string menuQuestion(std::string_view argument);

} // namespace corvel

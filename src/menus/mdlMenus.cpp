#include "menus/mdlMenus.h"

#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <array>

namespace corvel {

namespace {

struct ActionWord {
    std::string_view word;
    MenuAction action;
};

constexpr std::array<ActionWord, 10> actionWords = {{
    {"null", MenuAction::null},
    {"exec", MenuAction::exec},
    {"exit", MenuAction::exit},
    {"chmod", MenuAction::chmod},
    {"nuke", MenuAction::nuke},
    {"copyuser", MenuAction::copyUser},
    {"chattr", MenuAction::chattr},
    {"ftp", MenuAction::ftp},
    {"copy", MenuAction::copy},
    {"kill", MenuAction::kill},
}};

MenuAction actionOf(std::string_view word) {
    const auto* const found = std::ranges::find(actionWords, word, &ActionWord::word);
    return found == actionWords.end() ? MenuAction::nothing : found->action;
}

} // namespace

std::optional<MenuKind> menuKind(int number) {
    return number >= static_cast<int>(MenuKind::tray) && number <= static_cast<int>(MenuKind::activity)
               ? std::optional(static_cast<MenuKind>(number))
               : std::nullopt;
}

const std::vector<MenuEntry>& menuEntries(const Settings& settings, MenuKind kind) {
    static constexpr std::array lists = {&Settings::menu_tray, &Settings::menu_browser,
                                         &Settings::menu_userlist, &Settings::menu_grouplist,
                                         &Settings::menu_activity};
    return settings.*lists[static_cast<std::size_t>(kind) - 1];
}

MenuVariables menuVariables(const BrowserMenuRow& row) {
    return {{"pwd", row.pwd}, {"name", row.name}, {"user", row.user}, {"group", row.group}};
}

MenuVariables menuVariables(const UserMenuRow& row) {
    return {{"name", row.name}, {"user", row.name}, {"uid", row.uid}, {"group", row.group}};
}

MenuVariables menuVariables(const GroupMenuRow& row) {
    return {{"name", row.name}, {"gid", row.gid}};
}

MenuVariables menuVariables(const ConnectionMenuRow& row) {
    return {{"cid", row.cid},     {"user", row.user},         {"group", row.group},
            {"ident", row.ident}, {"clientip", row.clientip}, {"pwd", row.pwd}};
}

std::vector<MenuItem> expandMenu(const std::vector<MenuEntry>& entries, const MenuVariables& variables) {
    std::vector<MenuItem> items;
    items.reserve(entries.size());
    for (const MenuEntry& entry : entries) {
        items.push_back({.caption = ExpandTemplate(entry.caption, variables),
                         .command = ExpandTemplate(entry.command, variables),
                         .isSeparator = entry.caption == "-"});
    }
    return items;
}

MenuCommand parseMenuCommand(std::string_view line) {
    const std::vector<std::string_view> words = split(line, " ");
    std::string_view action = words.front();
    const bool asksFirst = action.size() >= 2 && action.starts_with('%');
    if (asksFirst) {
        action.remove_prefix(1);
    }
    return {.action = actionOf(action), .asksFirst = asksFirst, .argument = JoinWords(words, 1)};
}

std::string_view execTarget(std::string_view argument) {
    argument = trimLeading(argument);
    const std::size_t closing = argument.find('"', 1);
    if (argument.starts_with('"') && closing != std::string_view::npos) {
        return argument.substr(1, closing - 1);
    }
    return argument.substr(0, argument.find(' '));
}

std::string killPattern(std::string_view argument) {
    return foldCase(trim(argument));
}

std::string menuQuestion(std::string_view argument) {
    return "Are u sure u want to perform this command?\r\n\r\n" + visibleText(argument);
}

} // namespace corvel

#include "menus/mdlMenus.h"

#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>

namespace corvel {

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
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string_view action = line.substr(0, end);
    const bool asksFirst = action.size() >= 2 && action.starts_with('%');
    return {.action = std::string(action.substr(asksFirst ? 1 : 0)),
            .asksFirst = asksFirst,
            .argument = std::string(line.substr(std::min(end + 1, line.size())))};
}

std::string_view execTarget(std::string_view argument) {
    argument = trimLeading(argument);
    const std::size_t closing = argument.find('"', 1);
    if (argument.starts_with('"') && closing != std::string_view::npos) {
        return argument.substr(1, closing - 1);
    }
    return argument.substr(0, argument.find(' '));
}

std::string menuQuestion(std::string_view argument) {
    return "Are u sure u want to perform this command?\r\n\r\n" + visibleText(argument);
}

} // namespace corvel

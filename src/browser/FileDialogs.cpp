#include "browser/FileDialogs.h"

#include "browser/BrowserCommands.h"
#include "common/ShownText.h"
#include "common/Text.h"

#include <utility>

namespace corvel {

namespace {

constexpr std::string_view answerPrefix = "200-CHATTR: ";
constexpr std::string_view nothingSet = "<*not*set*>";

std::string inQuotes(std::string_view text) {
    return std::string("\"").append(text).append("\"");
}

void appendSelected(std::string& arguments, std::string_view sign, const std::vector<SelectableEntry>& list) {
    for (const SelectableEntry& entry : list) {
        if (entry.bSelected) {
            arguments.append(" ").append(sign).append(entry.sText);
        }
    }
}

// Each with a blank in front, the first one too.
std::string argumentsOf(const ChattrForm& form) {
    std::string arguments = form.chkFlags ? " " + form.txtFlags : std::string();
    appendSelected(arguments, "-", form.lstUsers);
    appendSelected(arguments, "=", form.lstGroups);
    return arguments;
}

// The permissions in a listed access text, behind the letter of the type.
Permissions permissionsIn(std::string_view access) {
    Permissions permissions = {};
    for (std::size_t i = 0; i < permissionCount && i + 1 < access.size(); ++i) {
        permissions[i] = access[i + 1] != '-';
    }
    return permissions;
}

} // namespace

Command chattrQuery(std::string_view name) {
    return {.sCommand = "site chattr +h " + inQuotes(name), .bQuiet = true, .iHandler = handler::chattrQuery};
}

std::string_view chattrText(std::string_view firstLine) {
    return firstLine.substr(firstLine.starts_with(answerPrefix) ? answerPrefix.size() : 0);
}

bool clearsUnseen(const ChattrForm& form) {
    return form.isRefused && !chattrCommands(form).empty() && argumentsOf(form).empty();
}

std::vector<Command> chattrCommands(const ChattrForm& form) {
    const std::string arguments = argumentsOf(form);
    if (!arguments.empty()) {
        return {fileCommand("site chattr +h ", inQuotes(form.sName) + " " + inQuotes(arguments))};
    }
    if (!matchesPattern(form.txtCurrent, nothingSet)) {
        return {fileCommand("site chattr -h ", inQuotes(form.sName))};
    }
    return {};
}

ChmodForm chmodForm(std::string_view cwd, const BrowserEntry& entry) {
    const Permissions permissions = permissionsIn(entry.access);
    return {.txtPath = pathIn(cwd, entry.name), .chkX = permissions, .txtCHMODval = chmodValue(permissions)};
}

ChmodForm chmodForm(std::string_view cwd, const std::vector<const BrowserEntry*>& entries,
                    std::string names) {
    ChmodForm form = chmodForm(cwd, *entries.front());
    for (const BrowserEntry* const entry : entries) {
        form.paths.push_back(pathIn(cwd, entry->name));
        if (permissionsIn(entry->access) != form.chkX) {
            form.modeOf = shownName(entries.front()->name);
        }
    }
    form.names = std::move(names);
    return form;
}

std::string chmodValue(const Permissions& permissions, std::string_view mode) {
    std::string value(mode.substr(0, mode.size() == 4 && permissionsOf(mode) ? 1 : 0));
    for (std::size_t i = 0; i < permissionCount; i += 3) {
        value += static_cast<char>('0' + 4 * permissions[i] + 2 * permissions[i + 1] + permissions[i + 2]);
    }
    return value;
}

std::optional<Permissions> permissionsOf(std::string_view value) {
    if (value.size() < 3 || value.size() > 4 ||
        value.find_first_not_of("01234567") != std::string_view::npos) {
        return std::nullopt;
    }
    value.remove_prefix(value.size() - 3);
    Permissions permissions = {};
    for (std::size_t i = 0; i < permissionCount; ++i) {
        permissions[i] = ((value[i / 3] - '0') >> (2 - i % 3) & 1) != 0;
    }
    return permissions;
}

std::vector<Command> chmodCommands(const ChmodForm& form) {
    std::vector<Command> commands;
    for (const std::string& path : form.paths.empty() ? std::vector{form.txtPath} : form.paths) {
        commands.push_back(fileCommand("SITE chmod " + form.txtCHMODval + " ", path));
    }
    return commands;
}

Command nukeCommand(const NukeForm& form, const NukeSyntax& syntax) {
    return fileCommand(
        ExpandTemplate(syntax.site_nuke_syntax,
                       {{"name", form.txtName},
                        {"mult", form.txtMultip},
                        {"reason", replaceAll(form.txtReason, " ", syntax.site_nuke_replace_spaces)}}),
        "");
}

} // namespace corvel

#include "browser/Chattr.h"

#include "browser/FileOperations.h"
#include "common/Text.h"

namespace corvel {

namespace {

constexpr std::string_view answerPrefix = "200-CHATTR: ";
constexpr std::string_view nothingSet = "<*not*set*>";

std::string quoted(std::string_view text) {
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

} // namespace

Command chattrQuery(std::string_view name) {
    return {.sCommand = "site chattr +h " + quoted(name), .bQuiet = true, .iHandler = handler::chattrQuery};
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
        return {fileCommand("site chattr +h ", quoted(form.sName) + " " + quoted(arguments))};
    }
    if (!matchesPattern(form.txtCurrent, nothingSet)) {
        return {fileCommand("site chattr -h ", quoted(form.sName))};
    }
    return {};
}

} // namespace corvel

#include "admin/AddUser.h"

#include "common/Numbers.h"
#include "common/Text.h"

#include <algorithm>

namespace corvel {

namespace {

constexpr std::array<std::string_view, 3> services = {"ftp", "telnet", "http"};

std::string existsMessage(const clsUser& user) {
    return "This user already exists: " + user.sName + "\r\nGroup: " + user.sStdGroup +
           "\r\nFlags: " + user.sFlags;
}

std::string furtherMasks(const AddUserForm& form) {
    std::vector<std::string_view> masks(form.lstUserIP.begin() + 1, form.lstUserIP.end());
    std::erase(masks, "");
    return join(masks, " ");
}

std::string selectedGroups(const AddUserForm& form) {
    std::vector<std::string_view> names;
    for (const SelectableEntry& entry : form.lstAllGroup) {
        if (entry.bSelected) {
            names.push_back(entry.sText);
        }
    }
    return join(names, " ");
}

// The commands that follow once the server has made the user; they are in lower case, as the first is not.
std::string followUpLines(const AddUserForm& form) {
    const std::string& name = form.txtUserName;
    const std::string change = "site change " + name + " ";
    std::vector<std::string> lines;
    if (form.lstUserIP.size() > 1) {
        lines.push_back("site addip " + name + " " + furtherMasks(form));
    }
    if (std::ranges::any_of(form.lstAllGroup, &SelectableEntry::bSelected)) {
        lines.push_back("site chgrp " + name + " " + selectedGroups(form));
    }
    lines.push_back(change + "credits " + creditsOfMegabytes(form.txtUserCredits) + " 0");
    lines.push_back(change + "ratio " + form.txtRatio + " 0");
    lines.push_back(change + "tagline " + form.txtUserTagLine);
    for (std::size_t i = 0; i < services.size(); ++i) {
        lines.push_back(
            (change + "logins " + wholeNumberText(form.txtNumOfLogins[i]) + " ").append(services[i]));
    }
    lines.push_back(change + "flags " + form.txtUserFlags);
    lines.push_back(change + "speedlimit " + form.txtUserBwDn + " " + form.txtUserBwUp);
    return batchText(lines);
}

} // namespace

AddUserForm addUserForm(const GroupTable& groups) {
    AddUserForm form;
    for (const clsGroup& group : groups) {
        if (!isPlaceholder(group)) {
            form.lstAllGroup.push_back({group.sName, false});
        }
    }
    return form;
}

std::optional<std::string> addUserQuestion(const AddUserForm& form) {
    if (form.txtUserFlags.find('M') == std::string::npos) {
        return std::nullopt;
    }
    return "Warning: you are adding a new [M]aster user. Continue?";
}

bool isUserName(std::string_view name) {
    return !name.empty() && name.find_first_of(" :") == std::string_view::npos;
}

std::optional<std::string> addUserProblem(const AddUserForm& form, const UserTable& users) {
    if (!isUserName(form.txtUserName)) {
        return std::string(invalidUserName);
    }
    if (const clsUser* user = findUserByName(users, form.txtUserName)) {
        return existsMessage(*user);
    }
    if (form.txtPassword.empty() || form.txtPassword.find(' ') != std::string::npos) {
        return "Please enter a valid password.";
    }
    if (form.txtMainGroup.empty()) {
        return "Please select a main group.";
    }
    if (form.lstUserIP.empty()) {
        return "Please enter at least one ip/ident.";
    }
    return std::nullopt;
}

CommandSequence addUserSequence(const AddUserForm& form) {
    const std::string line = "SITE gadduser " + form.txtMainGroup + " " + form.txtUserName + " " +
                             form.txtPassword + " " + form.lstUserIP.front();
    return {"-------------[ BEGIN ]-[ ADDUSER ]-------------", LogKind::console, followUpLines(form),
            Command{line, false, handler::addUser, -1}};
}

} // namespace corvel

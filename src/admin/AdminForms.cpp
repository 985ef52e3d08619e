#include "admin/AdminForms.h"

#include "common/Numbers.h"
#include "common/ShownText.h"
#include "common/Text.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace corvel {

namespace {

constexpr std::string_view invalidUserName = "Please enter a valid username.";

// The commands that follow once the server has made the user; they are in lower case, as the first is not.
std::string followUpLines(const AddUserForm& form) {
    std::string lines;
    const auto add = [&lines](const std::string& line) { lines.append(line).append(lineEnd); };
    const std::string& name = form.txtUserName;
    const std::string change = "site change " + name + " ";
    if (form.lstUserIP.size() > 1) {
        std::vector<std::string_view> masks(form.lstUserIP.begin() + 1, form.lstUserIP.end());
        std::erase(masks, "");
        add("site addip " + name + " " + join(masks, " "));
    }
    std::vector<std::string_view> groups;
    for (const SelectableEntry& entry : form.lstAllGroup) {
        if (entry.bSelected) {
            groups.push_back(entry.sText);
        }
    }
    if (!groups.empty()) {
        add("site chgrp " + name + " " + join(groups, " "));
    }
    add(change + "credits " + creditsOfMegabytes(form.txtUserCredits) + " 0");
    add(change + "ratio " + form.txtRatio + " 0");
    add(change + "tagline " + form.txtUserTagLine);
    for (std::size_t i = 0; i < loginServices.size(); ++i) {
        add((change + "logins " + wholeNumberText(form.txtNumOfLogins[i]) + " ").append(loginServices[i]));
    }
    add(change + "flags " + form.txtUserFlags);
    add(change + "speedlimit " + form.txtUserBwDn + " " + form.txtUserBwUp);
    return lines;
}

bool isGroupName(std::string_view name) {
    return !name.empty() && std::ranges::none_of(name, [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte < 0x20 || byte == 0x7F ||
               std::string_view(" :/\"").find(character) != std::string_view::npos;
    });
}

using Ids = std::unordered_set<std::int16_t>;

void addEntry(std::vector<SelectableEntry>& list, std::string& marker, const std::string& name,
              bool isSelected) {
    list.push_back({name, isSelected});
    if (isSelected) {
        marker.append(name).append(fieldSeparator);
    }
}

// The texts that stand in the marker between two separators and hold none themselves. Two separators may
// share a blank; one that begins in a name's own bar, or ends in it, lies between those around the name.
std::unordered_set<std::string_view> markedNames(std::string_view marker) {
    constexpr std::size_t mostBetween = 2;
    std::vector<std::size_t> separators;
    for (std::size_t at = marker.find(fieldSeparator); at != std::string_view::npos;
         at = marker.find(fieldSeparator, at + 2)) {
        separators.push_back(at);
    }
    std::unordered_set<std::string_view> names;
    for (std::size_t i = 0; i < separators.size(); ++i) {
        const std::size_t start = separators[i] + fieldSeparator.size();
        for (std::size_t j = i + 1; j < separators.size() && j <= i + 1 + mostBetween; ++j) {
            if (separators[j] >= start) {
                names.insert(marker.substr(start, separators[j] - start));
            }
        }
    }
    return names;
}

std::vector<std::string> changedNames(const std::vector<SelectableEntry>& list, const std::string& marker) {
    std::vector<std::string> names;
    const std::unordered_set<std::string_view> marked = markedNames(marker);
    for (const SelectableEntry& entry : list) {
        const bool wasSelected = marked.contains(entry.sText);
        if (entry.bSelected != wasSelected) {
            names.push_back(entry.sText);
        }
    }
    return names;
}

} // namespace

AddUserForm addUserForm(const GroupTable& groups, const AddUserForm* last) {
    static const AddUserForm first{.txtUserCredits = "0",
                                   .txtRatio = "3",
                                   .txtNumOfLogins = {"2", "0", "0"},
                                   .txtUserBwUp = "0",
                                   .txtUserBwDn = "0"};
    const AddUserForm& numbers = last == nullptr ? first : *last;
    AddUserForm form{.txtUserCredits = numbers.txtUserCredits,
                     .txtRatio = numbers.txtRatio,
                     .txtNumOfLogins = numbers.txtNumOfLogins,
                     .txtUserBwUp = numbers.txtUserBwUp,
                     .txtUserBwDn = numbers.txtUserBwDn};
    for (const clsGroup& group : groups) {
        if (!isPlaceholder(group)) {
            form.lstAllGroup.push_back({group.sName, false});
        }
    }
    return form;
}

std::string addedText(const AddUserForm& form, std::string_view refusedCommand, std::string_view refusal) {
    if (refusedCommand == addUserSequence(form).first.sCommand) {
        return {};
    }
    return shownName(form.txtUserName) + " added" +
           (refusedCommand.empty() ? std::string() : ", but: " + shownLine(refusal));
}

std::optional<std::string> addUserQuestion(const AddUserForm& form) {
    if (form.txtUserFlags.find('M') == std::string::npos) {
        return std::nullopt;
    }
    return "Warning: you are adding a new [M]aster user. Continue?";
}

std::optional<std::string> addUserProblem(const AddUserForm& form, const UserTable& users) {
    if (form.txtUserName.empty() || form.txtUserName.find_first_of(" :") != std::string::npos) {
        return std::string(invalidUserName);
    }
    if (const clsUser* user = findByName(users, form.txtUserName)) {
        return "This user already exists: " + user->sName + "\r\nGroup: " + user->sStdGroup +
               "\r\nFlags: " + user->sFlags;
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
    return {"-------------[ BEGIN ]-[ ADDUSER ]-------------",
            LogKind::console,
            followUpLines(form),
            Command{line, false, handler::addUser, -1},
            "add " + shownName(form.txtUserName),
            {form.txtUserName}};
}

std::optional<std::string> addGroupProblem(const AddGroupForm& form, const GroupTable& groups) {
    if (!isGroupName(form.txtGroupname)) {
        return "Please enter a valid groupname.";
    }
    if (const clsGroup* group = findByName(groups, form.txtGroupname)) {
        return "This group already exists: \r\nName: " + group->sName +
               "\r\nDescription: " + group->details().sDescription +
               "\r\nUsercount: " + std::to_string(group->iUserCount);
    }
    return std::nullopt;
}

CommandSequence addGroupSequence(const AddGroupForm& form) {
    const std::string change = "site change " + form.txtGroupname + " ";
    std::string lines = change + "groupslots " + wholeNumberText(form.txtGroupGroupslots) + " " +
                        wholeNumberText(form.txtGroupLeechslots);
    lines.append(lineEnd).append(change + "groupdescription " + form.txtGroupdescr).append(lineEnd);
    lines.append(change + "groupvfsfile " + form.txtGroupVFS).append(lineEnd);
    return {"-------------[ BEGIN ]-[ ADDGROUP ]-------------",
            LogKind::console,
            lines,
            Command{"SITE grpadd " + form.txtGroupname, false, handler::addGroup, -1},
            "add group " + shownName(form.txtGroupname),
            {form.txtGroupname}};
}

CopyUserForm copyUserForm(const clsUser& user) {
    return {user.sName, std::to_string(user.iUID), ""};
}

std::string withoutBlanks(std::string_view name) {
    return replaceAll(name, " ", "");
}

std::optional<std::string> copyUserProblem(const CopyUserForm& form, const UserTable& users) {
    const std::string name = withoutBlanks(form.txtNewUsername);
    if (name.empty()) {
        return std::string(invalidUserName);
    }
    if (findByName(users, name) != nullptr) {
        return "This user already exists !";
    }
    return std::nullopt;
}

Command copyUserCommand(const CopyUserForm& form) {
    return userChange("SITE CorvelExt copyuser " + form.txtSourceUID + " " +
                      withoutBlanks(form.txtNewUsername));
}

ChangeUserGroupsForm changeUserGroupsForm(const clsUser& user, const GroupTable& groups) {
    const std::string noNames(fieldSeparator);
    ChangeUserGroupsForm form{user.sName, {}, {}, noNames, noNames};
    const UserDetails& details = user.details();
    const Ids memberOf(details.groups.begin(), details.groups.end());
    const Ids adminOf(details.admingroups.begin(), details.admingroups.end());
    for (const clsGroup& group : groups) {
        if (!isPlaceholder(group)) {
            addEntry(form.lstGroups, form.sGroupMarker, group.sName, memberOf.contains(group.iGID));
            addEntry(form.lstGAdmin, form.sGadminMarker, group.sName, adminOf.contains(group.iGID));
        }
    }
    return form;
}

std::vector<Command> changeUserGroupsCommands(const clsUser& user, const ChangeUserGroupsForm& form) {
    std::vector<Command> commands;
    std::string toggled;
    for (const std::string& name : changedNames(form.lstGroups, form.sGroupMarker)) {
        toggled += name + " ";
    }
    if (!toggled.empty()) {
        commands.push_back(userChange("SITE chgrp " + user.sName + " " + toggled));
    }
    for (const std::string& name : changedNames(form.lstGAdmin, form.sGadminMarker)) {
        commands.push_back(userChange("SITE change " + user.sName + " admingroup " + name));
    }
    return commands;
}

SectionsForm sectionsForm(const clsUser& user) {
    SectionsForm form{user.sName, sectionRows(user), {}, {}};
    for (const UserSectionRow& row : form.lvwUserSections) {
        form.txtRatio.push_back(row.sRatio);
        form.txtCredits.push_back(row.sCredits);
    }
    return form;
}

std::vector<Command> saveSectionsCommands(const clsUser& user, const SectionsForm& form) {
    std::vector<Command> commands;
    const std::string change = "SITE change " + user.sName + " ";
    for (std::size_t i = 0; i < form.lvwUserSections.size(); ++i) {
        const UserSectionRow& shown = form.lvwUserSections[i];
        const std::string& ratio = form.txtRatio[i];
        const std::string& credits = form.txtCredits[i];
        if (ratio != shown.sRatio) {
            commands.push_back(userChange(change + "ratio " + wholeNumberText(ratio) + " " + shown.sSection));
        }
        if (credits != shown.sCredits) {
            commands.push_back(
                userChange(change + "credits " + creditsOfMegabytes(credits) + " " + shown.sSection));
        }
    }
    return commands;
}

} // namespace corvel

#include "admin/AccountChanges.h"

#include "admin/AdminForms.h"
#include "admin/TableCommands.h"
#include "common/Numbers.h"
#include "common/Text.h"

#include <unordered_set>

namespace corvel {

namespace {

using Ids = std::unordered_set<std::int16_t>;

void addEntry(std::vector<SelectableEntry>& list, std::string& marker, const std::string& name,
              bool isSelected) {
    list.push_back({name, isSelected});
    if (isSelected) {
        marker.append(name).append(fieldSeparator);
    }
}

std::vector<std::string> changedNames(const std::vector<SelectableEntry>& list, const std::string& marker) {
    std::vector<std::string> names;
    for (const SelectableEntry& entry : list) {
        const std::string wanted = std::string(fieldSeparator).append(entry.sText).append(fieldSeparator);
        const bool wasSelected = marker.find(wanted) != std::string::npos;
        if (entry.bSelected != wasSelected) {
            names.push_back(entry.sText);
        }
    }
    return names;
}

} // namespace

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
    if (findUserByName(users, name) != nullptr) {
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

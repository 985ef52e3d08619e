#include "admin/ChangeUserGroups.h"

#include "admin/IdLookup.h"
#include "admin/TableCommands.h"
#include "common/Text.h"

namespace corvel {

namespace {

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

ChangeUserGroupsForm changeUserGroupsForm(const clsUser& user, const GroupTable& groups) {
    ChangeUserGroupsForm form;
    form.sGroupMarker = fieldSeparator;
    form.sGadminMarker = fieldSeparator;
    const IdSet memberOf(user.groups());
    const IdSet adminOf(user.admingroups());
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

} // namespace corvel

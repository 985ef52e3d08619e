#pragma once

#include "admin/mdlUsersGroups.h"
#include "common/Command.h"
#include "common/SelectableEntry.h"

#include <string>
#include <vector>

namespace corvel {

// The dialog frmChangeUserGroups: every group of the site, twice. The markers remember what was selected at
// first: " | " and then each such name with " | " behind it.
struct ChangeUserGroupsForm {
    std::vector<SelectableEntry> lstGroups;
    std::vector<SelectableEntry> lstGAdmin;
    std::string sGroupMarker;
    std::string sGadminMarker;
};

ChangeUserGroupsForm changeUserGroupsForm(const clsUser& user, const GroupTable& groups);

// What OK sends for user: one toggle for all changed groups together, and one for each group whose
// administrator changed.
std::vector<Command> changeUserGroupsCommands(const clsUser& user, const ChangeUserGroupsForm& form);

} // namespace corvel

#pragma once

#include "admin/UserEditor.h"
#include "common/Command.h"
#include "common/SelectableEntry.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What the dialogs that work on one account show and send.

// The dialog frmCopyUser: one member for each of its controls.
struct CopyUserForm {
    std::string txtSourceUsername;
    std::string txtSourceUID;
    std::string txtNewUsername;
};

// The dialog as it opens for user.
CopyUserForm copyUserForm(const clsUser& user);

// A new name without its blanks, as OK writes it back into the box.
std::string withoutBlanks(std::string_view name);

// What is wrong with the new name, blanks removed, as a message; nothing where the copy can be made.
std::optional<std::string> copyUserProblem(const CopyUserForm& form, const UserTable& users);

// Makes the copy; form has no problem.
Command copyUserCommand(const CopyUserForm& form);

// The dialog frmChangeUserGroups: every group of the site, twice. The markers remember what was selected at
// first: " | " and then each such name with " | " behind it.
struct ChangeUserGroupsForm {
    std::string sUserName;
    std::vector<SelectableEntry> lstGroups;
    std::vector<SelectableEntry> lstGAdmin;
    std::string sGroupMarker;
    std::string sGadminMarker;
};

ChangeUserGroupsForm changeUserGroupsForm(const clsUser& user, const GroupTable& groups);

// What OK sends for user: one toggle for all changed groups together, and one for each group whose
// administrator changed.
std::vector<Command> changeUserGroupsCommands(const clsUser& user, const ChangeUserGroupsForm& form);

// The dialog frmUserSections over the rows of the editor's list: element i of each array belongs to row i.
struct SectionsForm {
    std::string sUserName;
    std::vector<UserSectionRow> lvwUserSections; // as shown at first
    std::vector<std::string> txtRatio;
    std::vector<std::string> txtCredits; // megabytes
};

SectionsForm sectionsForm(const clsUser& user);

// What Save sends for user: for each row a command for a ratio and for credits whose text changed.
std::vector<Command> saveSectionsCommands(const clsUser& user, const SectionsForm& form);

} // namespace corvel

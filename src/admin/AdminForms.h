#pragma once

#include "admin/AccountEditors.h"
#include "common/Ports.h"
#include "common/Text.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// Commands that run one after the other: first, and behind it the lines of sBatchLines, each ended by CR LF.
// As it starts, sBegin is written to the log beginLog. sTitle: what a person would call it all, UTF-8.
// accounts: those that the lines are about, as many of them each, in their order.
struct CommandSequence {
    std::string sBegin;
    LogKind beginLog = LogKind::console;
    std::string sBatchLines;
    Command first;
    std::string sTitle = {};
    std::vector<std::string> accounts = {};
};

// For which logins are counted, in the order of their boxes.
inline constexpr std::array<std::string_view, 3> loginServices = {"ftp", "telnet", "http"};

inline constexpr std::string_view taglinePlaceholder = "Too lame to have a tagline";

// The dialog frmAddUser: one member for each of its controls.
struct AddUserForm {
    std::string txtUserName;
    std::string txtPassword;
    std::string txtMainGroup;
    std::vector<SelectableEntry> lstAllGroup;
    std::string txtUserIP{maskPlaceholder};
    std::vector<std::string> lstUserIP;
    std::string txtUserFlags;
    std::string txtUserTagLine{taglinePlaceholder};
    std::string txtUserCredits; // megabytes
    std::string txtRatio;
    std::array<std::string, 3> txtNumOfLogins; // FTP, telnet, HTTP
    std::string txtUserBwUp;
    std::string txtUserBwDn;
};

// The dialog as it opens, with the groups of the site and no main group chosen. last: the one that was
// confirmed last, whose numbers it starts with; before the first one they are modest.
AddUserForm addUserForm(const GroupTable& groups, const AddUserForm* last = nullptr);

// The question, default answer no, before a user with the Master flag is added; nothing for other flags.
std::optional<std::string> addUserQuestion(const AddUserForm& form);

// What is wrong with the first box that does not do, as a message; nothing where the user can be added. A
// name is valid that can go into a command: not empty, no blank and no colon in it.
std::optional<std::string> addUserProblem(const AddUserForm& form, const UserTable& users);

// What a person reads of an account that was to be added, "newbie added", from its name and the first command
// that was refused with what the server said, all in its bytes; empty where it was not added. UTF-8.
std::string addedText(const AddUserForm& form, std::string_view refusedCommand, std::string_view refusal);

// The commands that create the user; form has no problem.
CommandSequence addUserSequence(const AddUserForm& form);

// The dialog frmAddGroup: one member for each of its controls.
struct AddGroupForm {
    std::string txtGroupname;
    std::string txtGroupdescr;
    std::string txtGroupGroupslots;
    std::string txtGroupLeechslots;
    std::string txtGroupVFS;
};

// What is wrong with the name, as a message; nothing where the group can be added. A name is valid that is
// not empty and has no blank, colon, slash, double quote or control character in it.
std::optional<std::string> addGroupProblem(const AddGroupForm& form, const GroupTable& groups);

// The commands that create the group; form has no problem.
CommandSequence addGroupSequence(const AddGroupForm& form);

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

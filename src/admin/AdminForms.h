#pragma once

#include "admin/Sequence.h"
#include "admin/UserEditor.h"
#include "common/SelectableEntry.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

inline constexpr std::string_view taglinePlaceholder = "Too lame to have a tagline";
inline constexpr std::string_view invalidUserName = "Please enter a valid username.";

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

// The dialog as it opens, with the groups of the site and no main group chosen.
AddUserForm addUserForm(const GroupTable& groups);

// The question, default answer no, before a user with the Master flag is added; nothing for other flags.
std::optional<std::string> addUserQuestion(const AddUserForm& form);

// What is wrong with the first box that does not do, as a message; nothing where the user can be added. A
// name is valid that can go into a command: not empty, no blank and no colon in it.
std::optional<std::string> addUserProblem(const AddUserForm& form, const UserTable& users);

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

// The batch panel: one member for each of its controls. A check box decides whether the boxes beside it
// count.
struct BatchForm {
    bool chkBatchFlags = false;
    bool chkBatchLogins = false;
    bool chkBatchHomePath = false;
    bool chkBatchVFS = false;
    bool chkBatchTagLine = false;
    bool chkBatchSpeed = false;
    bool chkBatchCommand = false;
    std::string txtBatchFlags;
    std::array<std::string, 3> txtBatchLogins; // FTP, telnet, HTTP; an empty box is passed over
    std::string txtBatchHomePath;
    std::string txtBatchVFS;
    std::string txtBatchTagline;
    std::string txtBatchSpeedDn; // kB/s; -1 or 0 for no limit
    std::string txtBatchSpeedUp;
    std::string txtBatchCommand = "site change %user credits 45000";
};

// The batch for the users of these names, in their order; nothing where it would hold no line.
std::optional<CommandSequence> batchSequence(const BatchForm& form,
                                             std::span<const std::string_view> userNames);

// How far a batch has come, "41 of 300", from the number of its lines and of those not yet sent.
std::string batchProgressText(std::size_t lineCount, std::size_t linesLeft);

} // namespace corvel

#pragma once

#include "admin/Sequence.h"
#include "admin/UserEditor.h"
#include "common/SelectableEntry.h"

#include <array>
#include <optional>
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

// Whether a user name can go into a command: neither empty nor with a blank or a colon in it.
bool isUserName(std::string_view name);

// What is wrong with the first box that does not do, as a message; nothing where the user can be added.
std::optional<std::string> addUserProblem(const AddUserForm& form, const UserTable& users);

// The commands that create the user; form has no problem.
CommandSequence addUserSequence(const AddUserForm& form);

} // namespace corvel

#pragma once

#include "admin/mdlUsersGroups.h"
#include "common/Command.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// The dialog frmCopyUser: one member for each of its controls.
struct CopyUserForm {
    std::string txtSourceUsername;
    std::string txtSourceUID;
    std::string txtNewUsername;
};

// The dialog as it opens for user.
CopyUserForm copyUserForm(const clsUser& user);

// Whether a key press may put character into txtNewUsername.
bool isCopyNameKey(char character);

// A new name without its blanks, as OK writes it back into the box.
std::string withoutBlanks(std::string_view name);

// What is wrong with the new name, blanks removed, as a message; nothing where the copy can be made.
std::optional<std::string> copyUserProblem(const CopyUserForm& form, const UserTable& users);

// Makes the copy; form has no problem.
Command copyUserCommand(const CopyUserForm& form);

} // namespace corvel

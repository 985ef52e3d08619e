#pragma once

#include "admin/mdlUsersGroups.h"
#include "admin/Sequence.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// The dialog frmAddGroup: one member for each of its controls.
struct AddGroupForm {
    std::string txtGroupname;
    std::string txtGroupdescr;
    std::string txtGroupGroupslots;
    std::string txtGroupLeechslots;
    std::string txtGroupVFS;
};

// Whether a group name can go into a command: not empty, no blank, colon, slash, double quote or control
// character in it.
bool isGroupName(std::string_view name);

// What is wrong with the name, as a message; nothing where the group can be added.
std::optional<std::string> addGroupProblem(const AddGroupForm& form, const GroupTable& groups);

// The commands that create the group; form has no problem.
CommandSequence addGroupSequence(const AddGroupForm& form);

} // namespace corvel

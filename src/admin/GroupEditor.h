#pragma once

#include "admin/mdlUsersGroups.h"
#include "common/Command.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corvel {

// A row of lvwGroupMembers.
struct GroupMemberRow {
    std::string sUID;
    std::string sUserName;
    std::string sGadmin; // "Yes" or "No"

    bool operator==(const GroupMemberRow&) const = default;
};

// The group editor: one member for each of its controls.
struct GroupForm {
    std::string txtGroupGID;
    std::string txtGroupname;
    std::string txtGroupdescr;
    std::string txtGroupGroupslots;
    std::string txtGroupLeechslots;
    std::string txtGroupVFS;
    std::vector<GroupMemberRow> lvwGroupMembers;
    std::string lblGroupMembers; // the number of rows

    // The boxes in which a record is edited, by number: name, description, group slots, leech slots, VFS
    // file.
    static constexpr std::size_t boxCount = 5;
    std::string& box(std::size_t number);
};

// The editor as it shows group; users is the user table of the same site.
GroupForm InfoToForm(const clsGroup& group, const UserTable& users);

// What Save sends for group: one command for each difference, all under the record's name.
std::vector<Command> saveGroupCommands(const clsGroup& group, const GroupForm& form);

} // namespace corvel

#pragma once

#include "admin/mdlUsersGroups.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What the box for a mask holds until a person types one.
inline constexpr std::string_view maskPlaceholder = "*@*";

// A row of lvwUserGroups.
struct UserGroupRow {
    std::string sGID;
    std::string sGroupName;
    std::string sGadmin; // "Yes" or "No"

    bool operator==(const UserGroupRow&) const = default;
};

// A row of lvwUserSections.
struct UserSectionRow {
    std::string sSection;
    std::string sRatio;
    std::string sCredits; // whole megabytes

    bool operator==(const UserSectionRow&) const = default;
};

// The user editor: one member for each of its controls.
struct UserForm {
    std::string txtUserUID;
    std::string txtUserName;
    std::string txtUserGroup;
    std::string txtUserFlags;
    std::string txtUserTagLine;
    std::string txtUserHomePath;
    std::string txtUserVFS;
    std::string txtUserBwDn;
    std::string txtUserBwUp;
    std::array<std::string, 3> txtUserLogins; // FTP, telnet, HTTP
    std::vector<std::string> lstUserIP;
    std::string txtUserIP{maskPlaceholder}; // belongs to the person: showing a record leaves the box alone
    std::vector<UserGroupRow> lvwUserGroups;
    std::vector<UserSectionRow> lvwUserSections;
};

// The editor as it shows user; groups is the group table of the same site.
UserForm InfoToForm(const clsUser& user, const GroupTable& groups);

// Typed megabytes in the server's unit, of which 1024 make one: the way back from what the sections show, as
// decimal text, computed exactly and then rounded halves to even.
std::string creditsOfMegabytes(std::string_view megabytes);

} // namespace corvel

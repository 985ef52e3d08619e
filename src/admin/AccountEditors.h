#pragma once

#include "admin/AccountLists.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What the box for a mask holds until a person types one.
inline constexpr std::string_view maskPlaceholder = "*@*";

// What the letters and digits of an account's flags are about.
inline constexpr std::string_view flagsTip =
    "M: master user, asked about before it is given or taken\n"
    "M, V, G and 1 have a picture in the list, N hides that of G and 1\n"
    "What else they allow is the server's to say";

// A row of lvwUserGroups (of lvwGroupMembers): a group of the user (a user of the group).
struct MemberRow {
    std::string sId;
    std::string sName;
    std::string sGadmin; // "Yes" or "No"

    bool operator==(const MemberRow&) const = default;
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
    std::vector<MemberRow> lvwUserGroups;
    std::vector<UserSectionRow> lvwUserSections;

    // The boxes in which a record is edited, by number: name, flags, tagline, home, VFS file, limits up and
    // down, and the three for logins.
    static constexpr std::size_t flagsBox = 1;
    static constexpr std::size_t firstLoginsBox = 7;
    static constexpr std::size_t boxCount = firstLoginsBox + 3;
    std::string& box(std::size_t number);
};

std::vector<UserSectionRow> sectionRows(const clsUser& user);

// The editor as it shows user; groups is the group table of the same site.
UserForm InfoToForm(const clsUser& user, const GroupTable& groups);

// Typed megabytes in the server's unit, of which 1024 make one: the way back from what the sections show, as
// decimal text, computed exactly and then rounded halves to even.
std::string creditsOfMegabytes(std::string_view megabytes);

// What the user editor's buttons send. user is the record of the account in the table; a change names the
// account as the record does. Whoever sends it has the userfile read behind it.

// The question that a change of flags needs where one of the two has the Master flag; its default answer is
// no. Nothing where the flags are the same or neither has it.
std::optional<std::string> masterQuestion(std::string_view oldFlags, std::string_view newFlags);

// One command for each difference between form and user. sendFlags: whether changed flags may go out, the
// answer to masterQuestion or true where it asks nothing.
std::vector<Command> saveUserCommands(const clsUser& user, const UserForm& form, bool sendFlags);

// Adds the mask, in the bytes of the server, to the account, or takes it away.
Command addMaskCommand(const clsUser& user, std::string_view mask);
Command deleteMaskCommand(const clsUser& user, std::string_view mask);

// Sets the password, which is not empty, of the account named in txtUserName. It goes out in clear.
Command passwordCommand(const UserForm& form, std::string_view password);

// The group editor: one member for each of its controls.
struct GroupForm {
    std::string txtGroupGID;
    std::string txtGroupname;
    std::string txtGroupdescr;
    std::string txtGroupGroupslots;
    std::string txtGroupLeechslots;
    std::string txtGroupVFS;
    std::vector<MemberRow> lvwGroupMembers;
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

#pragma once

#include "admin/mdlUsersGroups.h"
#include "common/Command.h"
#include "common/TextEncoding.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The lists lvwUsers and lvwGroups show the tables themselves: row i is record i, the placeholder has no row.
enum class UserColumn { uid, userName, group, flags };
enum class GroupColumn { gid, groupName, users };

inline constexpr std::array<std::string_view, 4> userColumnTitles = {"uid", "username", "group", "flags"};
inline constexpr std::array<std::string_view, 3> groupColumnTitles = {"gid", "groupname", "users"};

// The text of a record's row in a column.
std::string rowText(const clsUser& user, UserColumn column);
std::string rowText(const clsGroup& group, GroupColumn column);

// number, a decimal text, behind as many blanks as its length differs from 4: up to four digits line up, and
// a longer number gets room in front of it too.
std::string paddedNumber(std::string_view number);

// The key of the icon that goes with a user's flags, "M", "V", "G" or "A", or nothing for no icon.
std::string_view userIconKey(std::string_view flags);

// How a list is ordered: by a column, or as the server sent it.
struct ListOrder {
    int column = -1;
    bool isDescending = false;

    bool operator==(const ListOrder&) const = default;
};

// How far the details of the record are that an editor shows: there is none, they are to be asked for, the
// server was asked, they are there, they did not come.
enum class Details { none, wanted, asked, known, refused };

// What a person has typed into the boxes of an editor and not saved, by the numbers of the boxes: UTF-8, in
// which bytes it goes out is decided as it is sent.
struct Draft {
    std::string sName; // of the record; one of another name is another one that got its id
    std::map<std::size_t, std::string> boxes;
};

// What a person sees of a site's users or groups, and has typed there.
struct AccountView {
    ListOrder order;
    std::vector<std::size_t> rows;         // the index of the record in each row
    std::optional<std::int16_t> currentId; // of the record on which the editor acts
    bool isRead = false;                   // the server has answered a request for the table
    std::string problem;                   // its line where it refused the last one
    Details details = Details::none;       // of the current record
    std::string detailsProblem;            // why they did not come, the server's line or UTF-8
    std::map<std::int16_t, Draft> drafts;  // by the ids of the records
    std::string outcome;                   // of the last change, UTF-8, and of which record
    std::optional<std::int16_t> outcomeId;
    std::string added; // what was added since the table was read, UTF-8
};

// The order after a click on the header of column: by that column, or the other way round on a second click.
ListOrder afterHeaderClick(ListOrder order, int column);

// The indexes of the rows in that order: ids and counts as numbers, texts without regard to case, equal
// rows as the server sent them.
std::vector<std::size_t> orderedRows(const UserTable& users, ListOrder order);
std::vector<std::size_t> orderedRows(const GroupTable& groups, ListOrder order);

// What the users' and groups' lists send and ask. Names are the server's bytes.

Command userTableCommand();
Command groupTableCommand();

// Asks for the details of the record with the id. The tag is its place in the table, -1 where it has none or
// one that no tag can hold.
Command userFileCommand(const UserTable& users, std::int16_t uid);
Command groupFileCommand(const GroupTable& groups, std::int16_t gid);

// The question before an account (a group) is deleted, and the command after a yes.
std::string deleteUserQuestion(std::string_view userName, std::string_view groupName);
Command deleteUserCommand(std::string_view userName);
// The same for several, of which no more are named than a box can show. noun: of one. names: UTF-8.
std::string deleteSeveralQuestion(std::string_view noun, const std::vector<std::string>& names);
std::string deleteGroupQuestion(std::string_view groupName);
Command deleteGroupCommand(std::string_view groupName);

// A change of an account (of a group), shown on the console and in the command results.
Command userChange(std::string line);
Command groupChange(std::string line);

} // namespace corvel

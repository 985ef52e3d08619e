// Replies with the tables of users and groups.
#include "admin/AccountLists.h"
#include "admin/AdminForms.h"
#include "admin/mdlUsersGroups.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "Fuzz.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace corvel::fuzz {

namespace {

using Lines = std::vector<std::string_view>;

bool isSame(const clsUser& one, const clsUser& other) {
    return one.iUID == other.iUID && one.sUIDText == other.sUIDText && one.sName == other.sName &&
           one.sStdGroup == other.sStdGroup && one.sFlags == other.sFlags;
}

bool isSame(const clsGroup& one, const clsGroup& other) {
    return one.iGID == other.iGID && one.sGIDText == other.sGIDText && one.sName == other.sName &&
           one.iUserCount == other.iUserCount && one.sUserCountText == other.sUserCountText;
}

// Each line is read for itself, whatever stands around it.
template <typename Table>
void checkLinesAlone(const TableReply<Table>& reply, const Lines& lines,
                     TableReply<Table> (*parse)(int, std::span<const std::string_view>)) {
    std::size_t next = 0;
    std::size_t bad = 0;
    for (const std::string_view& line : lines) {
        const TableReply<Table> alone = parse(1, Lines{line});
        require(alone.table.size() == 1, "a line has one record, or there is the one of an empty table");
        bad += alone.bad.count;
        if (!isPlaceholder(alone.table.front())) {
            require(next < reply.table.size() && isSame(alone.table.front(), reply.table[next++]),
                    "a line alone gives the record that it gives among others");
        }
    }
    require(bad == reply.bad.count, "a line is bad wherever it stands");
    require(next == reply.table.size() || (next == 0 && isPlaceholder(reply.table.front())),
            "every record is of a line");
    require(badLinesMessage(reply.bad).has_value() == (bad > 0), "a bad line is told");
}

template <typename Table>
void checkOrder(const Table& table, int columns) {
    for (int column = -1; column < columns; ++column) {
        std::vector<std::size_t> rows = orderedRows(table, {column, false});
        const std::vector<std::size_t> turned = orderedRows(table, {column, true});
        require(rows.size() == turned.size() &&
                    rows.size() == (isPlaceholder(table.front()) ? 0 : table.size()),
                "each record has one row");
        std::ranges::sort(rows);
        for (std::size_t row = 0; row < rows.size(); ++row) {
            require(rows[row] == row, "no record has two");
        }
    }
}

void checkUsers(const UserTable& users) {
    const auto names = namesById(users, &clsUser::iUID);
    for (const clsUser& user : users) {
        require(isPlaceholder(user) || user.iUID == toInt16(user.sUIDText), "an id is what its text says");
        require(names.at(user.iUID) == UserNameOfUID(users, user.iUID), "an id has one name");
        require(isPlaceholder(user) || findByName(users, user.sName) != nullptr, "a name is found");
        require(rowText(user, UserColumn::uid).ends_with(user.sUIDText), "a row shows what was sent");
        require(isOneLine(userFileCommand(users, user.iUID).sCommand), "a request is one line");
        userIconKey(user.sFlags);
        for (const UserColumn column : {UserColumn::userName, UserColumn::group, UserColumn::flags}) {
            rowText(user, column);
        }
    }
}

void checkGroups(const GroupTable& groups) {
    const auto names = namesById(groups, &clsGroup::iGID);
    for (const clsGroup& group : groups) {
        require(isPlaceholder(group) || group.iGID == toInt16(group.sGIDText), "an id is what its text says");
        require(names.at(group.iGID) == GroupNameOfGID(groups, group.iGID), "an id has one name");
        require(rowText(group, GroupColumn::users).ends_with(group.sUserCountText),
                "a row shows what was sent");
        require(isOneLine(groupFileCommand(groups, group.iGID).sCommand), "a request is one line");
        rowText(group, GroupColumn::gid);
        rowText(group, GroupColumn::groupName);
    }
    require(addUserForm(groups).lstAllGroup.size() == orderedRows(groups, {}).size(),
            "a new user can be put into every group");
}

// The dialog goes by the names of groups, as the server does.
bool areNamesClear(const GroupTable& groups) {
    std::set<std::string_view> names;
    return std::ranges::all_of(groups, [&names](const clsGroup& group) {
        return !group.sName.empty() && group.sName.find('|') == std::string::npos &&
               names.insert(group.sName).second;
    });
}

// A dialog that is confirmed as it opened sends nothing.
void checkForms(const UserTable& users, const GroupTable& groups) {
    const bool isClear = areNamesClear(groups);
    for (const clsUser& user : users) {
        const std::vector<Command> toggles =
            changeUserGroupsCommands(user, changeUserGroupsForm(user, groups));
        require(toggles.empty() || !isClear, "groups that nobody has changed stay");
        if (!isPlaceholder(user)) {
            AddUserForm form = addUserForm(groups);
            form.txtUserName = user.sName;
            require(addUserProblem(form, users).has_value(), "nobody is added twice");
        }
    }
}

} // namespace

void check(std::string_view bytes) {
    const Lines lines = split(bytes, lineEnd);
    const TableReply<UserTable> users = ParseUserTable(1, lines);
    const TableReply<GroupTable> groups = ParseGroupTable(1, lines);
    checkLinesAlone(users, lines, ParseUserTable);
    checkLinesAlone(groups, lines, ParseGroupTable);
    checkOrder(users.table, 4);
    checkOrder(groups.table, 3);
    checkUsers(users.table);
    checkGroups(groups.table);
    checkForms(users.table, groups.table);
}

void work(std::string_view bytes) {
    const Lines lines = split(bytes, lineEnd);
    orderedRows(ParseUserTable(1, lines).table, {.column = 1});
    orderedRows(ParseGroupTable(1, lines).table, {.column = 0});
}

} // namespace corvel::fuzz

#include "admin/AccountLists.h"

#include "common/Text.h"

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <numeric>

namespace corvel {

namespace {

struct FlagIcon {
    std::string_view pattern;
    std::string_view key;
};

// The first pattern that the flags match decides; N takes the icon away from whoever is no master.
constexpr std::array<FlagIcon, 5> flagIcons{{
    {"*M*", "M"},
    {"*V*", "V"},
    {"*N*", ""},
    {"*G*", "G"},
    {"*1*", "A"},
}};

// What a column of numbers is ordered by; 0 in the other columns.
std::int16_t orderNumber(const clsUser& user, UserColumn column) {
    return column == UserColumn::uid ? user.iUID : std::int16_t{0};
}

std::int16_t orderNumber(const clsGroup& group, GroupColumn column) {
    return column == GroupColumn::gid     ? group.iGID
           : column == GroupColumn::users ? group.iUserCount
                                          : std::int16_t{0};
}

// What a row is ordered by: number, then text, whose first bytes spare nearly every look at the others.
struct RowKey {
    std::int16_t number = 0;
    std::uint64_t start = 0;
    std::string_view text = {};
    std::size_t row = 0;
};

bool comesBefore(const RowKey& left, const RowKey& right) {
    if (left.number != right.number) {
        return left.number < right.number;
    }
    return left.start != right.start ? left.start < right.start : left.text < right.text;
}

template <typename Column, typename Record>
std::vector<std::size_t> ordered(const std::vector<Record>& table, ListOrder order,
                                 std::initializer_list<Column> textColumns) {
    const auto column = static_cast<Column>(order.column);
    const bool isText = std::ranges::find(textColumns, column) != textColumns.end();
    std::vector<std::size_t> rows(table.size() == 1 && isPlaceholder(table.front()) ? 0 : table.size());
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    if (order.column < 0) {
        return rows;
    }
    std::string texts; // one behind the other
    std::vector<std::size_t> ends;
    ends.reserve(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (isText) {
            appendFolded(texts, rowText(table[row], column));
        }
        ends.push_back(texts.size());
    }
    std::vector<RowKey> keys(rows.size());
    for (std::size_t row = 0, start = 0; row < keys.size(); start = ends[row++]) {
        const std::string_view text = std::string_view(texts).substr(start, ends[row] - start);
        keys[row] = {orderNumber(table[row], column), eightBytes(text, 0), text, row};
    }
    std::ranges::stable_sort(keys, [&](const RowKey& left, const RowKey& right) {
        return order.isDescending ? comesBefore(right, left) : comesBefore(left, right);
    });
    std::ranges::transform(keys, rows.begin(), &RowKey::row);
    return rows;
}

std::int16_t tagOf(int index) {
    return index > std::numeric_limits<std::int16_t>::max() ? std::int16_t{-1}
                                                            : static_cast<std::int16_t>(index);
}

} // namespace

std::string rowText(const clsUser& user, UserColumn column) {
    switch (column) {
    case UserColumn::uid:
        return paddedNumber(user.sUIDText);
    case UserColumn::userName:
        return user.sName;
    case UserColumn::group:
        return user.sStdGroup;
    case UserColumn::flags:
        return user.sFlags;
    }
    return {};
}

std::string rowText(const clsGroup& group, GroupColumn column) {
    switch (column) {
    case GroupColumn::gid:
        return paddedNumber(group.sGIDText);
    case GroupColumn::groupName:
        return group.sName;
    case GroupColumn::users:
        return paddedNumber(group.sUserCountText);
    }
    return {};
}

std::string paddedNumber(std::string_view number) {
    constexpr std::size_t width = 4;
    const std::size_t blanks = number.size() < width ? width - number.size() : number.size() - width;
    return std::string(blanks, ' ').append(number);
}

std::string_view userIconKey(std::string_view flags) {
    const auto icon = std::ranges::find_if(
        flagIcons, [flags](const FlagIcon& row) { return matchesPattern(flags, row.pattern); });
    return icon == flagIcons.end() ? std::string_view() : icon->key;
}

ListOrder afterHeaderClick(ListOrder order, int column) {
    return {column, order.column == column && !order.isDescending};
}

std::vector<std::size_t> orderedRows(const UserTable& users, ListOrder order) {
    return ordered(users, order, {UserColumn::userName, UserColumn::group, UserColumn::flags});
}

std::vector<std::size_t> orderedRows(const GroupTable& groups, ListOrder order) {
    return ordered(groups, order, {GroupColumn::groupName});
}

Command userTableCommand() {
    return {"SITE CorvelExt usertable", true, handler::userTable, 0};
}

Command groupTableCommand() {
    return {"SITE CorvelExt grouptable", true, handler::groupTable, 0};
}

Command userFileCommand(const UserTable& users, std::int16_t uid) {
    return {"SITE CorvelExt userfile " + std::to_string(uid), true, handler::userFile,
            tagOf(FindUserIndexByUID(users, uid)), uid};
}

Command groupFileCommand(const GroupTable& groups, std::int16_t gid) {
    return {"SITE CorvelExt groupfile " + std::to_string(gid), true, handler::groupFile,
            tagOf(FindGroupIndexByGID(groups, gid)), gid};
}

std::string deleteUserQuestion(std::string_view userName, std::string_view groupName) {
    return "Are u sure u want to delete this user:\r\n" + std::string(userName) + "@" +
           std::string(groupName);
}

std::string deleteSeveralQuestion(std::string_view noun, const std::vector<std::string>& names) {
    constexpr std::size_t mostNamed = 12;
    std::string question = "Are u sure u want to delete these " + counted(names.size(), noun) + ":";
    for (std::size_t i = 0; i < std::min(names.size(), mostNamed); ++i) {
        question += "\r\n" + names[i];
    }
    if (names.size() > mostNamed) {
        question += "\r\n... and " + std::to_string(names.size() - mostNamed) + " more";
    }
    return question;
}

Command deleteUserCommand(std::string_view userName) {
    return userChange("SITE DELUSER " + std::string(userName));
}

std::string deleteGroupQuestion(std::string_view groupName) {
    return "Are u sure u want to delete this group:\r\n" + std::string(groupName) +
           "\r\n\r\nNote: make sure the group has no members, otherwise it can not be deleted";
}

Command deleteGroupCommand(std::string_view groupName) {
    return groupChange("SITE GRPDEL " + std::string(groupName));
}

Command userChange(std::string line) {
    return {std::move(line), false, handler::userChange, 0};
}

Command groupChange(std::string line) {
    return {std::move(line), false, handler::groupChange, 0};
}

} // namespace corvel

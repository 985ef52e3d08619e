#include "admin/ListRows.h"

#include "common/Text.h"

#include <algorithm>
#include <cstdint>
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

template <typename Record>
std::vector<std::size_t> asSent(const std::vector<Record>& table) {
    std::vector<std::size_t> rows(table.size() == 1 && isPlaceholder(table.front()) ? 0 : table.size());
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    return rows;
}

// The rows ordered by keyOf, which is called once for each record.
template <typename Record, typename KeyOf>
std::vector<std::size_t> orderedBy(const std::vector<Record>& table, bool isDescending, KeyOf keyOf) {
    std::vector<decltype(keyOf(table.front()))> keys;
    keys.reserve(table.size());
    std::ranges::transform(table, std::back_inserter(keys), keyOf);
    std::vector<std::size_t> rows = asSent(table);
    std::ranges::stable_sort(rows, [&](std::size_t left, std::size_t right) {
        return isDescending ? keys[right] < keys[left] : keys[left] < keys[right];
    });
    return rows;
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

std::vector<std::size_t> orderedRows(const UserTable& users, ListOrder order, TextEncoding encoding) {
    const auto column = static_cast<UserColumn>(order.column);
    switch (column) {
    case UserColumn::uid:
        return orderedBy(users, order.isDescending, [](const clsUser& user) { return user.iUID; });
    case UserColumn::userName:
    case UserColumn::group:
    case UserColumn::flags:
        return orderedBy(users, order.isDescending, [&](const clsUser& user) {
            return foldCase(toUtf8(rowText(user, column), encoding));
        });
    }
    return asSent(users);
}

std::vector<std::size_t> orderedRows(const GroupTable& groups, ListOrder order, TextEncoding encoding) {
    switch (static_cast<GroupColumn>(order.column)) {
    case GroupColumn::gid:
        return orderedBy(groups, order.isDescending, [](const clsGroup& group) { return group.iGID; });
    case GroupColumn::groupName:
        return orderedBy(groups, order.isDescending,
                         [&](const clsGroup& group) { return foldCase(toUtf8(group.sName, encoding)); });
    case GroupColumn::users:
        return orderedBy(groups, order.isDescending, [](const clsGroup& group) { return group.iUserCount; });
    }
    return asSent(groups);
}

} // namespace corvel

#include "admin/mdlUsersGroups.h"

#include "common/Numbers.h"
#include "common/Text.h"

#include <algorithm>
#include <array>

namespace corvel {

namespace {

constexpr std::size_t userFieldCount = 5;
constexpr std::size_t groupFieldCount = 4;

template <typename Record>
std::vector<Record> emptyTable(std::int16_t Record::*id) {
    std::vector<Record> table(1);
    table.front().*id = -1;
    return table;
}

template <typename Record>
int findIndex(const std::vector<Record>& table, std::int16_t Record::*id, std::int16_t wanted) {
    const auto found = std::ranges::find(table, wanted, id);
    return found == table.end() ? -1 : static_cast<int>(found - table.begin());
}

template <typename Record>
const Record* findByName(const std::vector<Record>& table, std::string_view name) {
    const auto found = std::ranges::find_if(
        table, [&](const Record& record) { return record.sName == name && !isPlaceholder(record); });
    return found == table.end() ? nullptr : &*found;
}

// Appends the record of fields; gives the field that is no 16-bit number where there is one.
const std::string_view* append(UserTable& users, int site,
                               const std::array<std::string_view, userFieldCount>& fields) {
    const std::optional<std::int16_t> uid = tryInt16(fields[1]);
    if (!uid) {
        return &fields[1];
    }
    clsUser& user = users.emplace_back();
    user.iUID = *uid;
    user.sUIDText = fields[1];
    user.sName = fields[2];
    user.sStdGroup = fields[3];
    user.sFlags = fields[4];
    user.my_index = site;
    return nullptr;
}

const std::string_view* append(GroupTable& groups, int site,
                               const std::array<std::string_view, groupFieldCount>& fields) {
    const std::optional<std::int16_t> gid = tryInt16(fields[1]);
    const std::optional<std::int16_t> userCount = tryInt16(fields[3]);
    if (!gid || !userCount) {
        return gid ? &fields[3] : &fields[1];
    }
    clsGroup& group = groups.emplace_back();
    group.iGID = *gid;
    group.sGIDText = fields[1];
    group.sName = fields[2];
    group.iUserCount = *userCount;
    group.sUserCountText = fields[3];
    group.my_index = site;
    return nullptr;
}

template <std::size_t fieldCount, typename Record>
TableReply<std::vector<Record>> readTable(int site, std::span<const std::string_view> lines,
                                          std::int16_t Record::*id) {
    // Room for every line that is long enough to hold its separators, so that no record is ever moved.
    constexpr std::size_t shortest = (fieldCount - 1) * fieldSeparator.size();
    TableReply<std::vector<Record>> reply;
    reply.table.reserve(static_cast<std::size_t>(
        std::ranges::count_if(lines, [](std::string_view line) { return line.size() >= shortest; })));
    std::array<std::string_view, fieldCount> fields;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!cutFields(lines[i], fields)) {
            continue;
        }
        if (const std::string_view* bad = append(reply.table, site, fields)) {
            reply.bad.note(i + 1, *bad, "16-bit number");
        }
    }
    if (reply.table.empty()) {
        reply.table = emptyTable(id);
    }
    return reply;
}

} // namespace

UserTable emptyUserTable() {
    return emptyTable(&clsUser::iUID);
}

GroupTable emptyGroupTable() {
    return emptyTable(&clsGroup::iGID);
}

bool isPlaceholder(const clsUser& user) {
    return user.iUID == -1 && user.sUIDText.empty();
}

bool isPlaceholder(const clsGroup& group) {
    return group.iGID == -1 && group.sGIDText.empty();
}

TableReply<UserTable> ParseUserTable(int site, std::span<const std::string_view> lines) {
    return readTable<userFieldCount>(site, lines, &clsUser::iUID);
}

TableReply<GroupTable> ParseGroupTable(int site, std::span<const std::string_view> lines) {
    return readTable<groupFieldCount>(site, lines, &clsGroup::iGID);
}

int FindUserIndexByUID(const UserTable& users, std::int16_t uid) {
    return findIndex(users, &clsUser::iUID, uid);
}

int FindGroupIndexByGID(const GroupTable& groups, std::int16_t gid) {
    return findIndex(groups, &clsGroup::iGID, gid);
}

int findUserIndexByText(const UserTable& users, std::string_view uidText) {
    const std::optional<std::int16_t> uid = tryInt16(uidText);
    return uidText.empty() || !uid ? -1 : FindUserIndexByUID(users, *uid);
}

const clsUser* findUserByName(const UserTable& users, std::string_view name) {
    return findByName(users, name);
}

const clsGroup* findGroupByName(const GroupTable& groups, std::string_view name) {
    return findByName(groups, name);
}

std::string_view UserNameOfUID(const UserTable& users, std::int16_t uid) {
    const int index = FindUserIndexByUID(users, uid);
    return index < 0 ? unknownUID : users[static_cast<std::size_t>(index)].sName;
}

std::string_view GroupNameOfGID(const GroupTable& groups, std::int16_t gid) {
    const int index = FindGroupIndexByGID(groups, gid);
    return index < 0 ? unknownGID : groups[static_cast<std::size_t>(index)].sName;
}

} // namespace corvel

#pragma once

#include "admin/clsGroup.h"
#include "admin/clsUser.h"
#include "common/Errors.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvel {

// The accounts and the groups of a site, in the order of the table reply. An empty table is one record with
// the id -1, never no record.
using UserTable = std::vector<clsUser>;
using GroupTable = std::vector<clsGroup>;

UserTable emptyUserTable();
GroupTable emptyGroupTable();

// Whether record stands for an empty table rather than for an account or a group of the server.
bool isPlaceholder(const clsUser& user);
bool isPlaceholder(const clsGroup& group);

// A table read from a reply, and the lines left out of it: those that had all their fields but whose id or
// count is no 16-bit number.
template <typename Table>
struct TableReply {
    Table table;
    BadLines bad;
};

// Reads the lines of a table reply of the given site: a user line has five fields separated by " | " (prefix,
// uid, name, primary group, flags), a group line four (prefix, gid, name, user count). Lines with another
// number of fields, the status lines among them, are passed over silently.
TableReply<UserTable> ParseUserTable(int site, std::span<const std::string_view> lines);
TableReply<GroupTable> ParseGroupTable(int site, std::span<const std::string_view> lines);

// The index of the first record with the id, -1 if there is none.
int FindUserIndexByUID(const UserTable& users, std::int16_t uid);
int FindGroupIndexByGID(const GroupTable& groups, std::int16_t gid);

// The index of the record whose id a box shows, -1 for an empty text and for a number outside 16 bits.
int findUserIndexByText(const UserTable& users, std::string_view uidText);

// The first record of exactly that name, or null; the placeholder has none.
const clsUser* findUserByName(const UserTable& users, std::string_view name);
const clsGroup* findGroupByName(const GroupTable& groups, std::string_view name);

// What stands in for the name of an account (a group) that the table does not have.
inline constexpr std::string_view unknownUID = "(bad_uid)";
inline constexpr std::string_view unknownGID = "(bad_gid)";

// The name of the first record with the id, or unknownUID (unknownGID). The text lives as long as the
// table.
std::string_view UserNameOfUID(const UserTable& users, std::int16_t uid);
std::string_view GroupNameOfGID(const GroupTable& groups, std::int16_t gid);

// The names of a table by the ids of their first records, for whoever looks up many. They live as long as the
// table.
template <typename Record>
std::unordered_map<std::int16_t, std::string_view> namesById(const std::vector<Record>& table,
                                                             std::int16_t Record::*id) {
    std::unordered_map<std::int16_t, std::string_view> names;
    for (const Record& record : table) {
        names.try_emplace(record.*id, record.sName);
    }
    return names;
}

} // namespace corvel

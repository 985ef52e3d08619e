#pragma once

#include "common/Bounds.h"
#include "common/Errors.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvel {

// What a userfile says about an account beyond its table.
struct UserDetails {
    static constexpr std::size_t sectionCount = 10;

    std::string sPwdHash; // no reply fills it
    std::string sTagline;
    std::string sVFSFile;
    std::string sHomePath;
    std::int32_t iBWLimitUp = 0; // kB/s
    std::int32_t iBWLimitDn = 0;
    std::int16_t iLoginsFTP = 0;
    std::int16_t iLoginsTelnet = 0;
    std::int16_t iLoginsHTTP = 0;
    // Of the ten sections; credits in 1/10000 of the server's unit, of which 1024 make a megabyte.
    std::array<std::int64_t, sectionCount> credits{};
    std::array<std::int16_t, sectionCount> ratios{};
    // Group ids, one -1 where a userfile names none.
    std::vector<std::int16_t> groups{-1};
    std::vector<std::int16_t> admingroups{-1};
    std::vector<std::string> ips{""}; // the masks from which the user may log in, ident@host
};

// One account of one site. The table reply fills the fields, ParseUserFile the details. All texts are the
// server's bytes.
class clsUser {
  public:
    std::int16_t iUID = 0; // -1 marks the one record of an empty table
    bool got_info = false; // a userfile reply was read to its end
    int my_index = 0;      // the site, from 1
    std::string sName;
    std::string sStdGroup;
    std::string sFlags;
    std::string sUIDText; // the uid as the table reply spells it; the list shows it

    // Reads the lines of a userfile reply, "200-key | value" each, into this record; lines with unknown keys
    // are passed over. Throws ParseError with the reply line's
    // number: what was read before stays, and got_info is false.
    void ParseUserFile(std::span<const std::string_view> lines);
    // Its two halves: forgets the details, a text or a number that the table does not name stays; reads one
    // line.
    void beginDetails();
    void readDetails(std::string_view line);

    // Empty ones before the first userfile.
    const UserDetails& details() const;

    // Whether gid is among the groups (admingroups). A user without groups is a member of -1.
    bool IsMemberOf(std::int16_t gid) const;
    bool IsAdminOf(std::int16_t gid) const;

  private:
    // One or none: only the few accounts that were opened have details, and tables hold many thousands.
    std::vector<UserDetails> details_;
};

// What a groupfile says about a group beyond its table.
struct GroupDetails {
    std::string sDescription;
    std::string sVFSFile;
    std::int16_t iGroupSlots = 0;
    std::int16_t iLeechSlots = 0;
    // User ids, one -1 where a groupfile names none; empty before the first groupfile.
    std::vector<std::int16_t> members;
    std::vector<std::int16_t> gadmins;
};

// One group of one site. The table reply fills the fields, ParseGroupFile the details. All texts are the
// server's bytes.
class clsGroup {
  public:
    std::int16_t iGID = 0; // -1 marks the one record of an empty table
    std::string sName;
    std::int16_t iUserCount = 0;
    bool got_info = false;      // a groupfile reply was read to its end
    int my_index = 0;           // the site, from 1
    std::string sGIDText;       // the gid as the table reply spells it; the list shows it
    std::string sUserCountText; // and the user count

    // Reads the lines of a groupfile reply, as clsUser::ParseUserFile does those of a userfile.
    void ParseGroupFile(std::span<const std::string_view> lines);
    void beginDetails();
    void readDetails(std::string_view line);

    // Empty ones before the first groupfile.
    const GroupDetails& details() const;

    // Whether uid is among the gadmins.
    bool IsGadmin(std::int16_t uid) const;

  private:
    std::vector<GroupDetails> details_; // one or none, as those of a user
};

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
// count is no 16-bit number, and those that a RecordRoom does not take.
template <typename Table>
struct TableReply {
    Table table;
    BadLines bad;
};

// Reads the lines of a table reply as they arrive.
template <typename Record>
class TableReader {
  public:
    // site: for the records.
    explicit TableReader(int site) : site_(site) {}

    void read(std::string_view line);
    // What was read; nothing is to be read afterwards.
    TableReply<std::vector<Record>> take();

  private:
    int site_;
    std::size_t lines_ = 0;
    RecordRoom room_;
    TableReply<std::vector<Record>> reply_;
};

extern template class TableReader<clsUser>;
extern template class TableReader<clsGroup>;

// Reads the lines of a userfile (groupfile) reply as they arrive, into a record of its own: only their last
// line says whether they are one.
template <typename Record>
class DetailsReader {
  public:
    // record: as the table has it.
    explicit DetailsReader(Record record) : record_(std::move(record)) { record_.beginDetails(); }

    // Nothing more is read behind a line that cannot be.
    void read(std::string_view line);
    // The record, with what was read of it until then.
    Record& record() { return record_; }
    const std::optional<ParseError>& problem() const { return problem_; }

  private:
    Record record_;
    std::size_t lines_ = 0;
    std::optional<ParseError> problem_;
};

extern template class DetailsReader<clsUser>;
extern template class DetailsReader<clsGroup>;

// Reads the lines of a table reply of the given site: a user line has five fields separated by " | " (prefix,
// uid, name, primary group, flags), a group line four (prefix, gid, name, user count). Lines with another
// number of fields, the status lines among them, are passed over silently.
TableReply<UserTable> ParseUserTable(int site, std::span<const std::string_view> lines);
TableReply<GroupTable> ParseGroupTable(int site, std::span<const std::string_view> lines);

// The index of the first record with the id, -1 if there is none.
int FindUserIndexByUID(const UserTable& users, std::int16_t uid);
int FindGroupIndexByGID(const GroupTable& groups, std::int16_t gid);

// The first record of exactly that name, or null; the placeholder has none.
template <typename Record>
const Record* findByName(const std::vector<Record>& table, std::string_view name) {
    const auto found = std::ranges::find_if(
        table, [&](const Record& record) { return record.sName == name && !isPlaceholder(record); });
    return found == table.end() ? nullptr : &*found;
}

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

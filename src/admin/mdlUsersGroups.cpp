#include "admin/mdlUsersGroups.h"

#include "common/Numbers.h"
#include "common/Text.h"

#include <numeric>
#include <type_traits>
#include <utility>

namespace corvel {

namespace {

// How the replies with the details of an account or a group are read: each line has a key and a value.

using Value = std::string_view;

// What a key does to the record.
template <typename Record>
struct ReplyKey {
    std::string_view key;
    void (*read)(Record& record, Value value);
};

// Reads line into record if it has one of keys.
template <typename Record, std::size_t keyCount>
void readReplyLine(Record& record, std::string_view line,
                   const std::array<ReplyKey<Record>, keyCount>& keys) {
    constexpr std::size_t prefixSize = 4;
    if (line.empty()) {
        return;
    }
    const std::size_t end = std::min(line.find(fieldSeparator), line.size());
    if (end < prefixSize) {
        throw ParseError(line, "is too short for a reply line");
    }
    const std::string_view key = line.substr(prefixSize, end - prefixSize);
    const auto known = std::ranges::find(keys, key, &ReplyKey<Record>::key);
    if (known == keys.end()) {
        return;
    }
    if (end == line.size()) {
        throw ParseError(line, "has no value");
    }
    known->read(record, line.substr(end + fieldSeparator.size()));
}

std::vector<std::string_view> listPieces(Value value) {
    return value.empty() ? std::vector<std::string_view>() : split(value, fieldSeparator);
}

// The first id takes the place of the last element (the -1 of an empty list), the others follow it. The ids
// before one that is outside 16 bits stay, and so do as many as there can be where more are named.
void readIds(std::vector<std::int16_t>& ids, Value value) {
    constexpr std::size_t mostIds = 65536;
    std::size_t place = ids.size() - 1;
    for (const std::string_view piece : listPieces(value)) {
        const std::int16_t id = toInt16(piece);
        if (place == mostIds) {
            throw ParseError(value, "names more than the 65536 ids that there are");
        }
        ids.resize(place + 1);
        ids[place++] = id;
    }
}

// A list with another number of pieces than it needs is passed over.
template <typename Number>
void readSections(std::array<Number, UserDetails::sectionCount>& sections, Value value,
                  Number (*convert)(std::string_view)) {
    std::array<std::string_view, UserDetails::sectionCount> pieces;
    if (cutFields(value, pieces)) {
        std::ranges::transform(pieces, sections.begin(), convert);
    }
}

void readLimits(UserDetails& details, Value value) {
    std::array<std::string_view, 5> pieces;
    if (!cutFields(value, pieces)) {
        return;
    }
    details.iBWLimitDn = toInt32(pieces[0]);
    details.iBWLimitUp = toInt32(pieces[1]);
    details.iLoginsTelnet = toInt16(pieces[2]);
    details.iLoginsFTP = toInt16(pieces[3]);
    details.iLoginsHTTP = toInt16(pieces[4]);
}

struct UserFile {
    clsUser& user;
    UserDetails& details;
};

constexpr std::array<ReplyKey<UserFile>, 13> userKeys{{
    {"username", [](UserFile& file, Value value) { file.user.sName = value; }},
    {"groupname", [](UserFile& file, Value value) { file.user.sStdGroup = value; }},
    {"flags", [](UserFile& file, Value value) { file.user.sFlags = value; }},
    {"tagline", [](UserFile& file, Value value) { file.details.sTagline = value; }},
    {"homepath", [](UserFile& file, Value value) { file.details.sHomePath = value; }},
    {"vfs", [](UserFile& file, Value value) { file.details.sVFSFile = value; }},
    {"vfsfile", [](UserFile& file, Value value) { file.details.sVFSFile = value; }},
    {"limits", [](UserFile& file, Value value) { readLimits(file.details, value); }},
    {"groups", [](UserFile& file, Value value) { readIds(file.details.groups, value); }},
    {"admingroups", [](UserFile& file, Value value) { readIds(file.details.admingroups, value); }},
    {"ratios", [](UserFile& file, Value value) { readSections(file.details.ratios, value, toInt16); }},
    {"credits", [](UserFile& file, Value value) { readSections(file.details.credits, value, toCurrency); }},
    {"ips",
     [](UserFile& file, Value value) {
         const auto pieces = listPieces(value);
         file.details.ips.assign(pieces.begin(), pieces.end());
     }},
}};

struct GroupFile {
    clsGroup& group;
    GroupDetails& details;
};

constexpr std::array<ReplyKey<GroupFile>, 8> groupKeys{{
    {"groupname", [](GroupFile& file, Value value) { file.group.sName = value; }},
    {"description", [](GroupFile& file, Value value) { file.details.sDescription = value; }},
    {"groupslots", [](GroupFile& file, Value value) { file.details.iGroupSlots = toInt16(value); }},
    {"leechslots", [](GroupFile& file, Value value) { file.details.iLeechSlots = toInt16(value); }},
    {"vfs", [](GroupFile& file, Value value) { file.details.sVFSFile = value; }},
    {"vfsfile", [](GroupFile& file, Value value) { file.details.sVFSFile = value; }},
    {"members", [](GroupFile& file, Value value) { readIds(file.details.members, value); }},
    {"gadmins", [](GroupFile& file, Value value) { readIds(file.details.gadmins, value); }},
}};

template <typename Details>
const Details& oneOrNone(const std::vector<Details>& details) {
    static const Details none;
    return details.empty() ? none : details.front();
}

bool holds(const std::vector<std::int16_t>& ids, std::int16_t id) {
    return std::ranges::find(ids, id) != ids.end();
}

// How the table replies are read.

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

// Appends the record of fields, whose texts take no more memory than they need; gives the field that is no
// 16-bit number where there is one.
const std::string_view* append(UserTable& users, int site,
                               const std::array<std::string_view, userFieldCount>& fields) {
    const std::optional<std::int16_t> uid = tryInt16(fields[1]);
    if (!uid) {
        return &fields[1];
    }
    clsUser& user = users.emplace_back();
    user.iUID = *uid;
    user.sUIDText = std::string(fields[1]);
    user.sName = std::string(fields[2]);
    user.sStdGroup = std::string(fields[3]);
    user.sFlags = std::string(fields[4]);
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
    group.sGIDText = std::string(fields[1]);
    group.sName = std::string(fields[2]);
    group.iUserCount = *userCount;
    group.sUserCountText = std::string(fields[3]);
    group.my_index = site;
    return nullptr;
}

template <typename Record>
constexpr auto fieldOfId = &clsUser::iUID;
template <>
constexpr auto fieldOfId<clsGroup> = &clsGroup::iGID;

template <typename Record>
constexpr std::size_t fieldCount = std::is_same_v<Record, clsUser> ? userFieldCount : groupFieldCount;

template <typename Record>
void readAll(Record& record, std::span<const std::string_view> lines) {
    record.beginDetails();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        try {
            record.readDetails(lines[i]);
        } catch (ParseError& error) {
            error.setLineNumber(i + 1);
            throw;
        }
    }
    record.got_info = true;
}

template <typename Record>
TableReply<std::vector<Record>> readTable(int site, std::span<const std::string_view> lines) {
    TableReader<Record> reader(site);
    for (const std::string_view line : lines) {
        reader.read(line);
    }
    return reader.take();
}

} // namespace

template <typename Record>
void DetailsReader<Record>::read(std::string_view line) {
    ++lines_;
    if (problem_) {
        return;
    }
    try {
        record_.readDetails(line);
    } catch (ParseError& error) {
        error.setLineNumber(lines_);
        problem_ = error;
    }
}

template class DetailsReader<clsUser>;
template class DetailsReader<clsGroup>;

void clsUser::beginDetails() {
    details_.resize(1);
    UserDetails& details = details_.front();
    details.credits = {};
    details.ratios = {};
    details.groups = details.admingroups = {-1};
    details.ips = {""};
    got_info = false;
}

void clsUser::readDetails(std::string_view line) {
    UserFile file{*this, details_.front()};
    readReplyLine(file, line, userKeys);
}

void clsUser::ParseUserFile(std::span<const std::string_view> lines) {
    readAll(*this, lines);
}

const UserDetails& clsUser::details() const {
    return oneOrNone(details_);
}

bool clsUser::IsMemberOf(std::int16_t gid) const {
    return holds(details().groups, gid);
}

bool clsUser::IsAdminOf(std::int16_t gid) const {
    return holds(details().admingroups, gid);
}

void clsGroup::beginDetails() {
    details_.resize(1);
    details_.front().members = details_.front().gadmins = {-1};
    got_info = false;
}

void clsGroup::readDetails(std::string_view line) {
    GroupFile file{*this, details_.front()};
    readReplyLine(file, line, groupKeys);
}

void clsGroup::ParseGroupFile(std::span<const std::string_view> lines) {
    readAll(*this, lines);
}

const GroupDetails& clsGroup::details() const {
    return oneOrNone(details_);
}

bool clsGroup::IsGadmin(std::int16_t uid) const {
    return holds(details().gadmins, uid);
}

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

template <typename Record>
void TableReader<Record>::read(std::string_view line) {
    ++lines_;
    std::array<std::string_view, fieldCount<Record>> fields;
    if (!cutFields(line, fields)) {
        return;
    }
    growInTwoSteps(reply_.table);
    if (room_.isFull()) {
        ++reply_.bad.tooMany;
    } else if (const std::string_view* bad = append(reply_.table, site_, fields)) {
        reply_.bad.note(lines_, *bad, "16-bit number");
    } else {
        room_.take(
            std::accumulate(fields.begin() + 1, fields.end(), sizeof(Record),
                            [](std::size_t sum, std::string_view field) { return sum + heapBytes(field); }));
    }
}

template <typename Record>
TableReply<std::vector<Record>> TableReader<Record>::take() {
    if (reply_.table.empty()) {
        reply_.table = emptyTable(fieldOfId<Record>);
    }
    return std::move(reply_);
}

template class TableReader<clsUser>;
template class TableReader<clsGroup>;

TableReply<UserTable> ParseUserTable(int site, std::span<const std::string_view> lines) {
    return readTable<clsUser>(site, lines);
}

TableReply<GroupTable> ParseGroupTable(int site, std::span<const std::string_view> lines) {
    return readTable<clsGroup>(site, lines);
}

int FindUserIndexByUID(const UserTable& users, std::int16_t uid) {
    return findIndex(users, &clsUser::iUID, uid);
}

int FindGroupIndexByGID(const GroupTable& groups, std::int16_t gid) {
    return findIndex(groups, &clsGroup::iGID, gid);
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

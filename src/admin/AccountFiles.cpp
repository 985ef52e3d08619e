// How the replies with the details of an account or a group are read: each line has a key and a value.

#include "admin/clsGroup.h"
#include "admin/clsUser.h"
#include "common/Errors.h"
#include "common/Numbers.h"
#include "common/Text.h"

#include <algorithm>

namespace corvel {

namespace {

using Value = std::string_view;

// What a key does to the record.
template <typename Record>
struct ReplyKey {
    std::string_view key;
    void (*read)(Record& record, Value value);
};

// Reads every line that has one of keys into record; lines with other keys are passed over.
template <typename Record, std::size_t keyCount>
void readReplyLines(Record& record, std::span<const std::string_view> lines,
                    const std::array<ReplyKey<Record>, keyCount>& keys) {
    constexpr std::size_t prefixSize = 4;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = lines[i];
        if (line.empty()) {
            continue;
        }
        try {
            const std::size_t end = std::min(line.find(fieldSeparator), line.size());
            if (end < prefixSize) {
                throw InvalidArgument(line, "is too short for a reply line");
            }
            const std::string_view key = line.substr(prefixSize, end - prefixSize);
            const auto known = std::ranges::find(keys, key, &ReplyKey<Record>::key);
            if (known == keys.end()) {
                continue;
            }
            if (end == line.size()) {
                throw IndexOutOfRange(line, "value");
            }
            known->read(record, line.substr(end + fieldSeparator.size()));
        } catch (ParseError& error) {
            error.setLineNumber(i + 1);
            throw;
        }
    }
}

std::vector<std::string_view> listPieces(Value value) {
    return value.empty() ? std::vector<std::string_view>() : split(value, fieldSeparator);
}

// The first id takes the place of the last element (the -1 of an empty list), the others follow it. The ids
// before one that is outside 16 bits stay.
void readIds(std::vector<std::int16_t>& ids, Value value) {
    std::size_t place = ids.size() - 1;
    for (const std::string_view piece : listPieces(value)) {
        const std::int16_t id = toInt16(piece);
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

constexpr std::array<ReplyKey<clsGroup>, 8> groupKeys{{
    {"groupname", [](clsGroup& group, Value value) { group.sName = value; }},
    {"description", [](clsGroup& group, Value value) { group.sDescription = value; }},
    {"groupslots", [](clsGroup& group, Value value) { group.iGroupSlots = toInt16(value); }},
    {"leechslots", [](clsGroup& group, Value value) { group.iLeechSlots = toInt16(value); }},
    {"vfs", [](clsGroup& group, Value value) { group.sVFSFile = value; }},
    {"vfsfile", [](clsGroup& group, Value value) { group.sVFSFile = value; }},
    {"members", [](clsGroup& group, Value value) { readIds(group.members, value); }},
    {"gadmins", [](clsGroup& group, Value value) { readIds(group.gadmins, value); }},
}};

bool holds(const std::vector<std::int16_t>& ids, std::int16_t id) {
    return std::ranges::find(ids, id) != ids.end();
}

} // namespace

// The lists start afresh; a text or a number that the reply does not name stays.
void clsUser::ParseUserFile(std::span<const std::string_view> lines) {
    details_.resize(1);
    UserDetails& details = details_.front();
    details.credits = {};
    details.ratios = {};
    details.groups = details.admingroups = {-1};
    details.ips = {""};
    got_info = false;
    UserFile file{*this, details};
    readReplyLines(file, lines, userKeys);
    got_info = true;
}

const UserDetails& clsUser::details() const {
    static const UserDetails none;
    return details_.empty() ? none : details_.front();
}

bool clsUser::IsMemberOf(std::int16_t gid) const {
    return holds(details().groups, gid);
}

bool clsUser::IsAdminOf(std::int16_t gid) const {
    return holds(details().admingroups, gid);
}

void clsGroup::ParseGroupFile(std::span<const std::string_view> lines) {
    members = gadmins = {-1};
    got_info = false;
    readReplyLines(*this, lines, groupKeys);
    got_info = true;
}

bool clsGroup::IsGadmin(std::int16_t uid) const {
    return holds(gadmins, uid);
}

} // namespace corvel

#include "demo/DemoAccounts.h"

#include "demo/DemoWords.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace corvel {

namespace {

constexpr std::size_t longestAccountName = 64;
constexpr std::int64_t most16Bit = 32'767;
constexpr std::int64_t most32Bit = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t mostCredits = 922'337'203'685'477; // what fits 64 bits with four decimals

using Value = std::string_view;

template <typename Records, typename Key, typename Wanted>
auto findBy(Records& records, Key key, Wanted wanted) -> decltype(records.data()) {
    const auto found = std::ranges::find(records, wanted, key);
    return found == records.end() ? nullptr : &*found;
}

template <typename Record>
Record& need(std::vector<Record>& records, std::string_view name) {
    Record* const record = findBy(records, &Record::name, name);
    if (record == nullptr) {
        refuse({Record::kind, " '", name, "' does not exist."});
    }
    return *record;
}

// A name has to stand as one word in commands and replies, and to be free.
template <typename Record>
void checkNewName(const std::vector<Record>& records, std::string_view name) {
    const bool isWord = std::ranges::none_of(name, [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte <= ' ' || byte == 127 || std::string_view(":/\"|").find(letter) != std::string_view::npos;
    });
    if (name.empty() || name.size() > longestAccountName || !isWord) {
        refuse({"'", name, "' is no valid name."});
    }
    if (findBy(records, &Record::name, name) != nullptr) {
        refuse({Record::kind, " '", name, "' exists already."});
    }
}

template <typename Record>
void add(std::vector<Record>& records, Record record, std::string_view name) {
    checkNewName(records, name);
    record.id = records.empty() ? 1 : records.back().id + 1;
    if (record.id > DemoAccounts::highestId) {
        refuse({"There are no more ", toLower(Record::kind), " ids."});
    }
    record.name = name;
    records.push_back(std::move(record));
}

template <typename Record>
void rename(std::vector<Record>& records, std::string_view name, std::string_view newName) {
    Record& renamed = need(records, name);
    checkNewName(records, newName);
    renamed.name = newName;
}

// What sets a property; false where the value is of another shape.
template <typename Record>
using Setter = bool (*)(Record& record, Value value);

template <auto field, typename Record>
bool setText(Record& record, Value value) {
    record.*field = value;
    return true;
}

bool setFlags(DemoUser& user, Value value) {
    return areFlags(value) && setText<&DemoUser::flags>(user, value);
}

bool setHome(DemoUser& user, Value value) {
    return value.starts_with('/') && setText<&DemoUser::homePath>(user, value);
}

bool setPassword(DemoUser& user, Value value) {
    const bool isWord = !value.empty() && value.find(' ') == Value::npos;
    return isWord && setText<&DemoUser::password>(user, value);
}

bool setLogins(DemoUser& user, Value value) {
    const std::vector<std::string_view> parts = words(value);
    const auto number = parts.size() == 2 ? numberWithin(parts[0], 0, most16Bit) : std::nullopt;
    const std::string service = number ? toLower(parts[1]) : "";
    int* const logins = service == "ftp"      ? &user.ftpLogins
                        : service == "telnet" ? &user.telnetLogins
                        : service == "http"   ? &user.httpLogins
                                              : nullptr;
    if (logins != nullptr) {
        *logins = static_cast<int>(*number);
    }
    return logins != nullptr;
}

// Two numbers from -1 on.
template <auto first, auto second, std::int64_t most, typename Record>
bool setPair(Record& record, Value value) {
    const std::vector<std::string_view> parts = words(value);
    if (parts.size() != 2 || !numberWithin(parts[0], -1, most) || !numberWithin(parts[1], -1, most)) {
        return false;
    }
    record.*first = static_cast<int>(*numberWithin(parts[0], -1, most));
    record.*second = static_cast<int>(*numberWithin(parts[1], -1, most));
    return true;
}

// "number" or "number section".
template <auto field, std::int64_t least, std::int64_t most>
bool setSection(DemoUser& user, Value value) {
    std::vector<std::string_view> parts = words(value);
    parts.resize(std::max<std::size_t>(parts.size(), 1));
    const auto number = numberWithin(parts[0], least, most);
    const auto section = numberWithin(parts.size() > 1 ? parts[1] : "0", 0, DemoUser::sectionCount - 1);
    if (parts.size() > 2 || !number || !section) {
        return false;
    }
    auto& changed = (user.*field)[static_cast<std::size_t>(*section)];
    changed = static_cast<std::remove_reference_t<decltype(changed)>>(*number);
    return true;
}

template <typename Record>
struct Property {
    std::string_view name;
    Setter<Record> set;
};

constexpr std::array<Property<DemoUser>, 10> userProperties = {{
    {"flags", setFlags},
    {"tagline", setText<&DemoUser::tagline>},
    {"homedir", setHome},
    {"vfsfile", setText<&DemoUser::vfsFile>},
    {"passwd", setPassword},
    {"logins", setLogins},
    {"speedlimit", setPair<&DemoUser::downLimit, &DemoUser::upLimit, most32Bit>},
    {"speedlimits", setPair<&DemoUser::downLimit, &DemoUser::upLimit, most32Bit>},
    {"ratio", setSection<&DemoUser::ratios, 0, most16Bit>},
    {"credits", setSection<&DemoUser::credits, -mostCredits, mostCredits>},
}};

constexpr std::array<Property<DemoGroup>, 3> groupProperties = {{
    {"groupslots", setPair<&DemoGroup::groupSlots, &DemoGroup::leechSlots, most16Bit>},
    {"groupdescription", setText<&DemoGroup::description>},
    {"groupvfsfile", setText<&DemoGroup::vfsFile>},
}};

template <typename Record>
void setProperty(const Property<Record>& property, Record& record, Value value) {
    if (!property.set(record, value)) {
        refuse({"Bad value for ", property.name, "."});
    }
}

} // namespace

bool areFlags(std::string_view text) {
    return std::ranges::all_of(text, [](char letter) {
        return (letter >= '0' && letter <= '9') || (lowerAscii(letter) >= 'a' && lowerAscii(letter) <= 'z');
    });
}

void toggle(std::vector<int>& ids, int id) {
    if (std::erase(ids, id) == 0) {
        ids.push_back(id);
    }
}

const DemoUser* DemoAccounts::findUser(std::string_view name) const {
    return findBy(users, &DemoUser::name, name);
}

const DemoUser* DemoAccounts::findUser(int id) const {
    return findBy(users, &DemoUser::id, id);
}

const DemoGroup* DemoAccounts::findGroup(std::string_view name) const {
    return findBy(groups, &DemoGroup::name, name);
}

const DemoGroup* DemoAccounts::findGroup(int id) const {
    return findBy(groups, &DemoGroup::id, id);
}

DemoUser& DemoAccounts::user(std::string_view name) {
    return need(users, name);
}

DemoGroup& DemoAccounts::group(std::string_view name) {
    return need(groups, name);
}

std::vector<std::string> DemoAccounts::groupNames(const DemoUser& user) const {
    std::vector<std::string> names;
    for (const int id : user.groups) {
        names.push_back(findGroup(id)->name);
    }
    return names;
}

void DemoAccounts::addUser(DemoUser user, std::string_view name) {
    add(users, std::move(user), name);
}

void DemoAccounts::addGroup(DemoGroup group, std::string_view name) {
    add(groups, std::move(group), name);
}

void DemoAccounts::renameUser(std::string_view name, std::string_view newName) {
    rename(users, name, newName);
}

void DemoAccounts::renameGroup(std::string_view name, std::string_view newName) {
    rename(groups, name, newName);
}

void DemoAccounts::change(std::string_view name, std::string_view property, std::string_view value) {
    const std::string wanted = toLower(property);
    if (const auto* row = findBy(groupProperties, &Property<DemoGroup>::name, std::string_view(wanted))) {
        setProperty(*row, group(name), value);
        return;
    }
    DemoUser& changed = user(name);
    if (wanted == "admingroup") {
        toggle(changed.adminGroups, group(value).id);
    } else if (const auto* row =
                   findBy(userProperties, &Property<DemoUser>::name, std::string_view(wanted))) {
        setProperty(*row, changed, value);
    } else {
        refuse({"Unknown property '", property, "'."});
    }
}

} // namespace corvel

#include "demo/DemoAccounts.h"

#include "demo/DemoContents.h"
#include "demo/DemoProperties.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

constexpr std::size_t longestAccountName = 64;

template <typename Records, typename Key, typename Value>
auto findBy(Records& records, Key key, const Value& value) -> decltype(records.data()) {
    const auto found = std::find_if(records.begin(), records.end(),
                                    [&](const auto& record) { return record.*key == value; });
    return found == records.end() ? nullptr : &*found;
}

template <typename Value>
bool contains(const std::vector<Value>& values, const Value& value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

// Whether text can name a user or a group: it has to stand as one word in commands and replies.
bool isAccountName(std::string_view text) {
    return !text.empty() && text.size() <= longestAccountName &&
           std::none_of(text.begin(), text.end(), [](char letter) {
               const auto byte = static_cast<unsigned char>(letter);
               return byte <= ' ' || byte == 127 || letter == ':' || letter == '/' || letter == '"' ||
                      letter == '|';
           });
}

bool isMask(std::string_view text) {
    const std::size_t at = text.find('@');
    return at != std::string_view::npos && at > 0 && at + 1 < text.size();
}

Problem badName(std::string_view name) {
    return concat({"'", name, "' is no valid name."});
}

Problem missingUser(std::string_view name) {
    return concat({"User '", name, "' does not exist."});
}

Problem missingGroup(std::string_view name) {
    return concat({"Group '", name, "' does not exist."});
}

// Why the masks cannot be added to what is there.
Problem maskProblem(std::vector<std::string> there, const std::vector<std::string_view>& masks) {
    for (const std::string_view mask : masks) {
        if (!isMask(mask)) {
            return concat({"'", mask, "' is no ident@host mask."});
        }
        if (contains(there, std::string(mask))) {
            return concat({"Mask '", mask, "' is there already."});
        }
        there.emplace_back(mask);
    }
    return there.size() > DemoAccounts::mostMasks ? "A user can have ten masks." : "";
}

void toggle(std::vector<int>& ids, int id) {
    if (std::erase(ids, id) == 0) {
        ids.push_back(id);
    }
}

} // namespace

DemoAccounts::DemoAccounts(int userCount) : users_(makeDemoUsers(userCount)), groups_(makeDemoGroups()) {}

const DemoUser* DemoAccounts::findUser(std::string_view name) const {
    return findBy(users_, &DemoUser::name, name);
}

const DemoUser* DemoAccounts::findUser(int uid) const {
    return findBy(users_, &DemoUser::uid, uid);
}

const DemoGroup* DemoAccounts::findGroup(std::string_view name) const {
    return findBy(groups_, &DemoGroup::name, name);
}

const DemoGroup* DemoAccounts::findGroup(int gid) const {
    return findBy(groups_, &DemoGroup::gid, gid);
}

DemoUser* DemoAccounts::user(std::string_view name) {
    return findBy(users_, &DemoUser::name, name);
}

DemoGroup* DemoAccounts::group(std::string_view name) {
    return findBy(groups_, &DemoGroup::name, name);
}

std::vector<std::string> DemoAccounts::groupNames(const DemoUser& user) const {
    std::vector<std::string> names;
    for (const int gid : user.groups) {
        if (const DemoGroup* group = findGroup(gid)) {
            names.push_back(group->name);
        }
    }
    return names;
}

Problem DemoAccounts::insertUser(DemoUser user, std::string_view name) {
    if (!isAccountName(name)) {
        return badName(name);
    }
    if (findUser(name) != nullptr) {
        return concat({"User '", name, "' exists already."});
    }
    const int uid = users_.empty() ? 1 : users_.back().uid + 1;
    if (uid > highestId) {
        return "There are no more user ids.";
    }
    user.uid = uid;
    user.name = name;
    users_.push_back(std::move(user));
    return {};
}

Problem DemoAccounts::addUser(std::string_view groupName, std::string_view name, std::string_view password,
                              const std::vector<std::string_view>& masks) {
    const DemoGroup* primary = findGroup(groupName);
    if (primary == nullptr) {
        return missingGroup(groupName);
    }
    if (Problem problem = maskProblem({}, masks); !problem.empty()) {
        return problem;
    }
    DemoUser user;
    user.password = password;
    user.homePath = concat({"/home/", name});
    user.masks.assign(masks.begin(), masks.end());
    user.groups = {primary->gid};
    user.ratios.front() = 3;
    return insertUser(std::move(user), name);
}

Problem DemoAccounts::copyUser(int uid, std::string_view name) {
    const DemoUser* source = findUser(uid);
    return source == nullptr ? concat({"There is no user with the uid ", std::to_string(uid), "."})
                             : insertUser(*source, name);
}

Problem DemoAccounts::renameUser(std::string_view name, std::string_view newName) {
    DemoUser* renamed = user(name);
    if (renamed == nullptr) {
        return missingUser(name);
    }
    if (!isAccountName(newName)) {
        return badName(newName);
    }
    if (findUser(newName) != nullptr) {
        return concat({"User '", newName, "' exists already."});
    }
    renamed->name = newName;
    return {};
}

Problem DemoAccounts::removeUser(std::string_view name) {
    return std::erase_if(users_, [&](const DemoUser& user) { return user.name == name; }) > 0
               ? Problem()
               : missingUser(name);
}

Problem DemoAccounts::addGroup(std::string_view name, std::string_view description) {
    if (!isAccountName(name)) {
        return badName(name);
    }
    if (findGroup(name) != nullptr) {
        return concat({"Group '", name, "' exists already."});
    }
    DemoGroup group;
    group.gid = groups_.empty() ? 1 : groups_.back().gid + 1;
    if (group.gid > highestId) {
        return "There are no more group ids.";
    }
    group.name = name;
    group.description = description;
    groups_.push_back(std::move(group));
    return {};
}

Problem DemoAccounts::renameGroup(std::string_view name, std::string_view newName) {
    DemoGroup* renamed = group(name);
    if (renamed == nullptr) {
        return missingGroup(name);
    }
    if (!isAccountName(newName)) {
        return badName(newName);
    }
    if (findGroup(newName) != nullptr) {
        return concat({"Group '", newName, "' exists already."});
    }
    renamed->name = newName;
    return {};
}

Problem DemoAccounts::removeGroup(std::string_view name) {
    const DemoGroup* removed = findGroup(name);
    if (removed == nullptr) {
        return missingGroup(name);
    }
    const int gid = removed->gid;
    const auto members = std::count_if(users_.begin(), users_.end(),
                                       [&](const DemoUser& user) { return contains(user.groups, gid); });
    if (members > 0) {
        return concat({"Group '", name, "' still has members: ", std::to_string(members), "."});
    }
    for (DemoUser& user : users_) {
        std::erase(user.adminGroups, gid);
    }
    std::erase_if(groups_, [&](const DemoGroup& group) { return group.gid == gid; });
    return {};
}

Problem DemoAccounts::toggleGroups(std::string_view name, const std::vector<std::string_view>& groupNames) {
    DemoUser* changed = user(name);
    if (changed == nullptr) {
        return missingUser(name);
    }
    std::vector<int> gids = changed->groups;
    for (const std::string_view groupName : groupNames) {
        const DemoGroup* toggled = findGroup(groupName);
        if (toggled == nullptr) {
            return missingGroup(groupName);
        }
        toggle(gids, toggled->gid);
    }
    if (gids.empty()) {
        return concat({"User '", name, "' has to stay in one group."});
    }
    changed->groups = std::move(gids);
    return {};
}

Problem DemoAccounts::addMasks(std::string_view name, const std::vector<std::string_view>& masks) {
    DemoUser* changed = user(name);
    if (changed == nullptr) {
        return missingUser(name);
    }
    if (Problem problem = maskProblem(changed->masks, masks); !problem.empty()) {
        return problem;
    }
    changed->masks.insert(changed->masks.end(), masks.begin(), masks.end());
    return {};
}

Problem DemoAccounts::removeMasks(std::string_view name, const std::vector<std::string_view>& masks) {
    DemoUser* changed = user(name);
    if (changed == nullptr) {
        return missingUser(name);
    }
    std::vector<std::string> left = changed->masks;
    for (const std::string_view mask : masks) {
        if (std::erase(left, mask) == 0) {
            return concat({"User '", name, "' has no mask '", mask, "'."});
        }
    }
    changed->masks = std::move(left);
    return {};
}

void DemoAccounts::takeCredits(std::string_view name, std::int64_t kilobytes) {
    if (DemoUser* loser = user(name)) {
        loser->credits.front() -= kilobytes;
    }
}

Problem DemoAccounts::changeUser(std::string_view name, std::string_view property, std::string_view value) {
    DemoUser* changed = user(name);
    if (changed == nullptr) {
        return missingUser(name);
    }
    if (!isAdminProperty(property)) {
        return changeUserProperty(*changed, property, value);
    }
    const DemoGroup* administered = findGroup(value);
    if (administered == nullptr) {
        return missingGroup(value);
    }
    toggle(changed->adminGroups, administered->gid);
    return {};
}

Problem DemoAccounts::changeGroup(std::string_view name, std::string_view property, std::string_view value) {
    DemoGroup* changed = group(name);
    return changed == nullptr ? missingGroup(name) : changeGroupProperty(*changed, property, value);
}

} // namespace corvel

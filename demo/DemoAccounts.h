#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// An account of the demo server. Ids are 16-bit numbers; groups are named by their ids, the primary one
// first.
struct DemoUser {
    static constexpr std::size_t sectionCount = 10;

    int uid = 0;
    std::string name;
    std::string password;
    std::string flags = "3"; // letters and digits; M: master user
    std::string tagline;
    std::string homePath = "/";
    std::string vfsFile;
    std::vector<std::string> masks; // ident-at-host
    std::vector<int> groups;
    std::vector<int> adminGroups;
    int downLimit = 0; // kB/s, 0 or -1: no limit
    int upLimit = 0;
    int telnetLogins = 0;
    int ftpLogins = 2;
    int httpLogins = 0;
    std::array<int, sectionCount> ratios{};
    std::array<std::int64_t, sectionCount> credits{}; // kB
};

struct DemoGroup {
    int gid = 0;
    std::string name;
    std::string description;
    std::string vfsFile;
    int groupSlots = 0;
    int leechSlots = 0;
};

// Why a change was refused, as a sentence for the reply; empty when it was made.
using Problem = std::string;

// The demo server's users and groups, in the order of their ids. Every change is made as a whole or not at
// all.
class DemoAccounts {
  public:
    static constexpr int mostUsers = 30'000;
    static constexpr int highestId = 32'767;
    static constexpr std::size_t mostMasks = 10;

    // userCount: 1 to mostUsers.
    explicit DemoAccounts(int userCount);

    const std::vector<DemoUser>& users() const { return users_; }
    const std::vector<DemoGroup>& groups() const { return groups_; }

    // Nothing when there is no such user or group. Valid until the next change.
    const DemoUser* findUser(std::string_view name) const;
    const DemoUser* findUser(int uid) const;
    const DemoGroup* findGroup(std::string_view name) const;
    const DemoGroup* findGroup(int gid) const;

    // The names of the user's groups, the primary one first.
    std::vector<std::string> groupNames(const DemoUser& user) const;

    Problem addUser(std::string_view groupName, std::string_view name, std::string_view password,
                    const std::vector<std::string_view>& masks);
    // A new user like the one of that uid but for name and uid.
    Problem copyUser(int uid, std::string_view name);
    Problem renameUser(std::string_view name, std::string_view newName);
    Problem removeUser(std::string_view name);

    Problem addGroup(std::string_view name, std::string_view description);
    Problem renameGroup(std::string_view name, std::string_view newName);
    // Only a group without members can go.
    Problem removeGroup(std::string_view name);

    // Makes the user a member of each group that he is not in and takes him out of each that he is in.
    Problem toggleGroups(std::string_view name, const std::vector<std::string_view>& groupNames);

    Problem addMasks(std::string_view name, const std::vector<std::string_view>& masks);
    Problem removeMasks(std::string_view name, const std::vector<std::string_view>& masks);

    // Takes kB off the user's credits in the first section; an unknown name is nothing to do.
    void takeCredits(std::string_view name, std::int64_t kilobytes);

    // Sets one property, see DemoProperties.h; the property's name in any case.
    Problem changeUser(std::string_view name, std::string_view property, std::string_view value);
    Problem changeGroup(std::string_view name, std::string_view property, std::string_view value);

  private:
    DemoUser* user(std::string_view name);
    DemoGroup* group(std::string_view name);
    Problem insertUser(DemoUser user, std::string_view name);

    std::vector<DemoUser> users_;
    std::vector<DemoGroup> groups_;
};

} // namespace corvel

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
    std::string flags;
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

// The demo server's users and groups, in the order of their ids.
class DemoAccounts {
  public:
    static constexpr int mostUsers = 30'000;

    // The same accounts at every call: the first is demo, a master user with the password "demo"; every other
    // user's password is his name. userCount: 1 to mostUsers.
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

  private:
    std::vector<DemoUser> users_;
    std::vector<DemoGroup> groups_;
};

} // namespace corvel

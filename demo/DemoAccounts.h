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
    static constexpr std::string_view kind = "User";
    static constexpr std::size_t sectionCount = 10;

    int id = 0;
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

    bool isMaster() const { return flags.find('M') != std::string::npos; }
};

struct DemoGroup {
    static constexpr std::string_view kind = "Group";

    int id = 0;
    std::string name = {};
    std::string description = {};
    std::string vfsFile = {};
    int groupSlots = 0;
    int leechSlots = 0;
};

// The demo server's users and groups, in the order of their ids. Every change is made as a whole or, where it
// is refused by a Refusal with the reason, not at all.
struct DemoAccounts {
    static constexpr int mostUsers = 30'000; // to begin with
    static constexpr int highestId = 32'767;

    std::vector<DemoUser> users;
    std::vector<DemoGroup> groups;

    // Nothing when there is no such user or group. Valid until the next change.
    const DemoUser* findUser(std::string_view name) const;
    const DemoUser* findUser(int id) const;
    const DemoGroup* findGroup(std::string_view name) const;
    const DemoGroup* findGroup(int id) const;

    // As those, but to be changed, and refused when there is none.
    DemoUser& user(std::string_view name);
    DemoGroup& group(std::string_view name);

    // The names of the user's groups, the primary one first.
    std::vector<std::string> groupNames(const DemoUser& user) const;

    // Adds a record under a name and with an id of its own.
    void addUser(DemoUser user, std::string_view name);
    void addGroup(DemoGroup group, std::string_view name);

    void renameUser(std::string_view name, std::string_view newName);
    void renameGroup(std::string_view name, std::string_view newName);

    // Sets one property to a value; property in any case, numbers whole and decimal:
    // user:  flags letters and digits; tagline text; homedir absolute path; vfsfile text; passwd one word;
    //        logins "number ftp|telnet|http"; speedlimit or speedlimits "down up" in kB/s, -1 or 0 for none;
    //        ratio and credits "number [section]", without a section the first one, credits in kB;
    //        admingroup: the name of a group, of which the user becomes an administrator or is one no longer
    // group: groupslots "slots leech"; groupdescription text; groupvfsfile text
    void change(std::string_view name, std::string_view property, std::string_view value);
};

// Whether text is a set of flags: letters and digits, or nothing.
bool areFlags(std::string_view text);

// Takes id out of ids, or puts it behind them where it is not among them.
void toggle(std::vector<int>& ids, int id);

} // namespace corvel

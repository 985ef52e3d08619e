#include "demo/DemoAccountContents.h"

#include "demo/DemoWords.h"

#include <array>

namespace corvel {

namespace {

struct GroupRow {
    std::string_view name;
    std::string_view description;
    int groupSlots;
    int leechSlots;
};

constexpr std::array<GroupRow, 8> groupRows = {{
    {"staff", "the people who run this server", 20, 5},
    {"sysops", "machines and backups", 5, 5},
    {"friends", "friends of the house", 10, 0},
    {"archive", "keepers of the archive", 8, 2},
    {"music", "the band and its label", 12, 1},
    {"mirror", "mirror operators", 6, 6},
    {"guests", "accounts for a day", 50, 0},
    {"library", "Bücher und Karten", 3, 0},
}};

constexpr std::array<std::string_view, 60> userNames = {
    "demo",  "alice",  "bob",    "carol",   "dave",   "erin",   "frank",  "grace",   "heidi",  "ivan",
    "judy",  "karl",   "laura",  "mallory", "nina",   "oscar",  "peggy",  "quentin", "rupert", "sybil",
    "trent", "ursula", "victor", "wendy",   "xavier", "yvonne", "zoe",    "adam",    "bella",  "cyril",
    "diana", "edgar",  "fiona",  "george",  "hanna",  "igor",   "jana",   "kevin",   "lena",   "martin",
    "nora",  "otto",   "paula",  "ralf",    "sara",   "tom",    "ulrich", "vera",    "walter", "xenia",
    "yuri",  "zelda",  "anton",  "berta",   "conrad", "dora",   "emil",   "frida",   "gustav", "helga",
};

constexpr std::array<std::string_view, 6> flagTexts = {"3", "31", "3G", "3V", "", "31N"};

std::string userName(std::size_t index) {
    std::string name(userNames[index % userNames.size()]);
    const std::size_t round = index / userNames.size();
    return round == 0 ? name : name + std::to_string(round + 1);
}

DemoUser makeUser(int index) {
    const auto number = static_cast<std::size_t>(index);
    DemoUser user;
    user.uid = index + 1;
    user.name = userName(number);
    user.password = user.name;
    user.flags = flagTexts[number % flagTexts.size()];
    user.tagline = number % 4 == 3 ? "" : "this is " + user.name + ", number " + std::to_string(user.uid);
    user.homePath = "/home/" + user.name;
    user.vfsFile = number % 5 == 0 ? "/etc/vfs/" + user.name + ".vfs" : "";
    user.masks = {"*@10.0." + std::to_string(number / 250 % 250) + "." + std::to_string(number % 250)};
    if (number % 3 == 0) {
        user.masks.push_back(user.name + "@*.example.net");
    }
    const int groupCount = static_cast<int>(groupRows.size());
    user.groups = {index % groupCount + 1};
    if (number % 2 == 1) {
        user.groups.push_back((index + 3) % groupCount + 1);
    }
    if (user.flags.find('G') != std::string::npos) {
        user.adminGroups = {user.groups.front()};
    }
    user.downLimit = index % 7 * 100;
    user.upLimit = index % 5 * 50;
    user.ftpLogins = index % 4 + 1;
    user.telnetLogins = index % 3;
    user.httpLogins = index % 2;
    for (std::size_t section = 0; section < DemoUser::sectionCount; ++section) {
        user.ratios[section] = section == 0 ? 3 : static_cast<int>(section % 2);
        user.credits[section] = static_cast<std::int64_t>((number + 1) * 1536 * (section + 1));
    }
    return user;
}

} // namespace

std::vector<DemoGroup> makeDemoGroups() {
    std::vector<DemoGroup> groups;
    for (const GroupRow& row : groupRows) {
        DemoGroup group;
        group.gid = static_cast<int>(groups.size()) + 1;
        group.name = row.name;
        group.description = row.description;
        group.vfsFile = concat({"/etc/vfs/groups/", row.name, ".vfs"});
        group.groupSlots = row.groupSlots;
        group.leechSlots = row.leechSlots;
        groups.push_back(std::move(group));
    }
    return groups;
}

std::vector<DemoUser> makeDemoUsers(int count) {
    std::vector<DemoUser> users;
    users.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        users.push_back(makeUser(i));
    }
    users.front().flags = "3M";
    users.front().ftpLogins = 50;
    return users;
}

} // namespace corvel

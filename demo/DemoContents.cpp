#include "demo/DemoCommands.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace corvel {

namespace {

struct Entry {
    std::string_view path;
    char type;
    unsigned mode;
    std::string_view owner;
    std::string_view group;
    std::uint64_t size;
    std::string_view date;
    std::string_view target = {};
    std::string_view hiddenText = {};
};

constexpr std::uint64_t directorySize = 4096;

constexpr std::array entries = {
    Entry{"/pub", 'd', 0775, "demo", "staff", directorySize, "Mar 3 2021"},
    Entry{"/pub/tools", 'd', 0775, "demo", "staff", directorySize, "Feb 11 08:15"},
    Entry{"/pub/Holiday pictures", 'd', 0775, "demo", "staff", directorySize, "Aug 21 2019"},
    Entry{"/pub/two  blanks", 'd', 0775, "demo", "staff", directorySize, "Aug 22 2019"},
    Entry{"/pub/empty", 'd', 0775, "demo", "staff", directorySize, "Jan 1 00:00"},
    Entry{"/pub/Größe und Maß", 'd', 0775, "demo", "staff", directorySize, "Oct 9 2018"},
    Entry{"/pub/日本語", 'd', 0775, "demo", "staff", directorySize, "Dec 31 23:59"},
    Entry{"/incoming", 'd', 01777, "root", "root", directorySize, "May 17 12:00"},
    Entry{"/archive", 'd', 0755, "demo", "archive", directorySize, "Jan 2 2022"},
    Entry{"/music", 'd', 0775, "demo", "music", directorySize, "Sep 30 2020"},
    Entry{"/logs", 'd', 0750, "demo", "sysops", directorySize, "Apr 1 06:25"},
    Entry{"/private", 'd', 0700, "root", "root", directorySize, "Jul 4 2017"},
    Entry{"/dev", 'd', 0755, "root", "root", directorySize, "Jan 1 00:00"},
    Entry{"/home", 'd', 0755, "root", "root", directorySize, "Nov 12 2016"},
    Entry{"/home/demo", 'd', 0755, "demo", "staff", directorySize, "Jun 2 17:45"},
    Entry{"/home/alice", 'd', 0750, "alice", "staff", directorySize, "Jun 2 17:46"},
    Entry{"/pub/not for everyone", 'd', 0775, "demo", "staff", directorySize, "Jan 5 2020", "",
          "-alice =sysops"},
    Entry{"/welcome.txt", '-', 0644, "demo", "staff", 1187, "Jan 5 2020"},
    Entry{"/.message", '-', 0644, "demo", "staff", 64, "Jan 5 2020"},
    Entry{"/pub/README", '-', 0644, "demo", "staff", 2304, "Mar 3 2021"},
    Entry{"/pub/.hidden notes", '-', 0600, "demo", "staff", 17, "Mar 3 2021"},
    Entry{"/pub/file with blanks.txt", '-', 0644, "demo", "staff", 5, "Feb 29 2020"},
    Entry{"/pub/say \"hello\".txt", '-', 0644, "demo", "staff", 12, "Feb 29 2020"},
    Entry{"/pub/200 numbers first.txt", '-', 0644, "demo", "staff", 200, "Feb 28 2019"},
    Entry{"/pub/a | b | c", '-', 0644, "demo", "staff", 3, "Feb 28 2019"},
    Entry{"/pub/-dash", '-', 0644, "demo", "staff", 1, "Feb 28 2019"},
    Entry{"/pub/disc image.iso", '-', 0644, "demo", "staff", 4'700'372'992, "Nov 23 22:10"},
    Entry{"/pub/zero", '-', 0644, "demo", "staff", 0, "Nov 23 22:11"},
    Entry{"/pub/two  blanks/inner  file", '-', 0644, "demo", "staff", 808, "Aug 22 2019"},
    Entry{"/pub/Größe und Maß/Übersicht – Äpfel.txt", '-', 0644, "demo", "staff", 4711, "Oct 9 2018"},
    Entry{"/pub/Größe und Maß/naïve café.txt", '-', 0644, "demo", "staff", 321, "Oct 9 2018"},
    Entry{"/pub/日本語/読んでください.txt", '-', 0644, "demo", "staff", 1024, "Dec 31 23:59"},
    Entry{"/pub/日本語/Привет, мир.txt", '-', 0644, "demo", "staff", 2048, "Dec 31 23:58"},
    Entry{"/pub/日本語/emoji 🎈.txt", '-', 0644, "demo", "staff", 4096, "Dec 31 23:57"},
    Entry{"/pub/tools/backup", '-', 0755, "demo", "staff", 53'248, "Feb 11 08:15"},
    Entry{"/pub/tools/restart", '-', 04755, "root", "staff", 18'432, "Feb 11 08:16"},
    Entry{"/pub/tools/report", '-', 0640, "demo", "sysops", 9'216, "Feb 11 08:17"},
    Entry{"/pub/tools/unreadable", '-', 0000, "demo", "staff", 66, "Feb 11 08:18"},
    Entry{"/private/keys", '-', 0600, "root", "root", 512, "Jul 4 2017"},
    Entry{"/home/demo/notes.txt", '-', 0600, "demo", "staff", 640, "Jun 2 17:45"},
    Entry{"/home/demo/old", 's', 0755, "demo", "staff", 0, "Jun 2 2018"},
    Entry{"/home/alice/todo.txt", '-', 0640, "alice", "staff", 96, "Jun 2 17:46"},
    Entry{"/dev/null", 'c', 0666, "root", "root", 0, "Jan 1 00:00"},
    Entry{"/dev/zero", 'c', 0666, "root", "root", 0, "Jan 1 00:00"},
    Entry{"/dev/tty", 'c', 0620, "root", "tty", 0, "Jan 1 00:01"},
    Entry{"/dev/sda", 'b', 0660, "root", "disk", 0, "Jan 1 00:00"},
    Entry{"/dev/sda1", 'b', 0660, "root", "disk", 0, "Jan 1 00:00"},
    Entry{"/dev/initctl", 'p', 0600, "root", "root", 0, "Jan 1 00:00"},
    Entry{"/dev/log", 's', 0666, "root", "root", 0, "Jan 1 00:00"},
    Entry{"/current", 'l', 0777, "demo", "staff", 0, "Jan 2 2022", "archive/2021"},
    Entry{"/top", 'l', 0777, "root", "root", 0, "Nov 12 2016", "/"},
    Entry{"/pub/inbox", 'l', 0777, "demo", "staff", 0, "May 17 12:00", "/incoming/"},
    Entry{"/pub/latest", 'l', 0777, "demo", "staff", 0, "Jan 2 2022", "../archive/2021"},
    Entry{"/pub/pictures", 'l', 0777, "demo", "staff", 0, "Aug 21 2019", "Holiday pictures"},
    Entry{"/pub/read me first", 'l', 0777, "demo", "staff", 0, "Mar 3 2021", "README"},
    Entry{"/pub/nowhere", 'l', 0777, "demo", "staff", 0, "Apr 30 2015", "/removed/long ago"},
    Entry{"/pub/circle", 'l', 0777, "demo", "staff", 0, "Apr 30 2015", "circle"},
};

// number in decimal with zeros in front up to width digits.
std::string padded(int number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

constexpr std::array<std::string_view, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

TreeNode file(std::uint64_t size, std::string date, std::string_view group = "staff") {
    return {.group = std::string(group), .size = size, .date = std::move(date)};
}

// Some size in bytes, the same at every start.
std::uint64_t sizeOf(int number, std::uint64_t factor) {
    return static_cast<std::uint64_t>(number) * factor;
}

void addReports(DemoTree& tree) {
    for (int year = 2015; year <= 2021; ++year) {
        const std::string path = "/archive/" + std::to_string(year);
        tree.place(path, {'d', 0775, "demo", "archive", directorySize, "Dec 31 " + std::to_string(year)});
        for (std::size_t month = 0; month < months.size(); ++month) {
            const auto number = static_cast<int>(month) + 1;
            tree.place(path + "/report-" + padded(number, 2) + ".pdf",
                       file(sizeOf(year, 37) + sizeOf(number, 1013),
                            std::string(months[month]) + " 28 " + std::to_string(year), "archive"));
        }
    }
}

void addSeries(DemoTree& tree) {
    for (int day = 1; day <= 28; ++day) {
        const std::string date = "Mar " + std::to_string(day) + " " + padded(day % 24, 2) + ":25";
        tree.place("/logs/transfers-" + padded(day, 2) + ".log", file(sizeOf(day, 90'001), date, "sysops"));
    }
    for (int picture = 1; picture <= 40; ++picture) {
        tree.place("/pub/Holiday pictures/beach " + std::to_string(picture) + ".jpg",
                   file(1'500'000 + sizeOf(picture, 7'919),
                        "Aug 21 " + padded(picture % 24, 2) + ":" + padded(picture, 2)));
    }
    for (int album = 1; album <= 6; ++album) {
        for (int track = 1; track <= 12; ++track) {
            tree.place("/music/Album " + std::to_string(album) + "/" + padded(track, 2) + " - Track.flac",
                       file(sizeOf(album, 1'000'003) + sizeOf(track, 20'011), "Sep 30 2020", "music"));
        }
    }
}

void addLongNames(DemoTree& tree) {
    const std::string words = "a rather long name that goes on and on ";
    std::string longName;
    while (longName.size() + words.size() < DemoTree::longestName) {
        longName += words;
    }
    tree.place("/pub/" + longName + "until here.txt", file(77, "May 5 2014"));
    tree.place("/pub/" + std::string(DemoTree::longestName, 'x'), file(255, "May 5 2014"));
    std::string deep = "/archive";
    for (int level = 1; level <= 12; ++level) {
        deep += "/level " + std::to_string(level);
    }
    tree.place(deep + "/bottom.txt", file(12, "May 6 2014"));
}

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

DemoUser makeUser(int index) {
    const auto number = static_cast<std::size_t>(index);
    DemoUser user;
    user.id = index + 1;
    user.name = userNames[number % userNames.size()];
    if (number >= userNames.size()) {
        user.name += std::to_string(number / userNames.size() + 1);
    }
    user.password = user.name;
    user.flags = flagTexts[number % flagTexts.size()];
    user.tagline = number % 4 == 3 ? "" : "this is " + user.name + ", number " + std::to_string(user.id);
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
    if (user.flags == "3G") {
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

void fillDemoTree(DemoTree& tree, int bigEntries) {
    for (const Entry& entry : entries) {
        tree.place(entry.path,
                   {entry.type, entry.mode, std::string(entry.owner), std::string(entry.group), entry.size,
                    std::string(entry.date), std::string(entry.target), std::string(entry.hiddenText)});
    }
    addReports(tree);
    addSeries(tree);
    addLongNames(tree);
    for (int i = 1; i <= bigEntries; ++i) {
        const auto number = static_cast<std::uint64_t>(i);
        tree.place("/big/file-" + padded(i, 7) + ".dat",
                   file(number * 7'919 % 10'000'019, std::string(months[number % 12]) + " " +
                                                         std::to_string(i % 28 + 1) + " " +
                                                         std::to_string(2000 + i % 24)));
    }
}

DemoAccounts makeDemoAccounts(int userCount) {
    DemoAccounts accounts;
    for (const GroupRow& row : groupRows) {
        accounts.groups.push_back({static_cast<int>(accounts.groups.size()) + 1, std::string(row.name),
                                   std::string(row.description),
                                   concat({"/etc/vfs/groups/", row.name, ".vfs"}), row.groupSlots,
                                   row.leechSlots});
    }
    accounts.users.reserve(static_cast<std::size_t>(userCount));
    for (int i = 0; i < userCount; ++i) {
        accounts.users.push_back(makeUser(i));
    }
    accounts.users.front().flags = "3M";
    accounts.users.front().ftpLogins = 50;
    return accounts;
}

} // namespace corvel

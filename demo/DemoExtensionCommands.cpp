#include "common/Text.h"
#include "demo/DemoCommands.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>

namespace corvel {

namespace {

constexpr std::string_view prefix = "200-";

// One value line: the prefix, the key and the value behind a separator.
std::string valueLine(std::string_view key, std::string_view value) {
    return concat({prefix, key, fieldSeparator, value, lineEnd});
}

// The values in decimal with separators between; nothing for an empty list.
template <typename Numbers>
std::string numberList(const Numbers& numbers) {
    std::string text;
    for (const auto number : numbers) {
        text.append(text.empty() ? "" : fieldSeparator).append(std::to_string(number));
    }
    return text;
}

const std::string& primaryGroup(const DemoAccounts& accounts, const DemoUser& user) {
    return accounts.findGroup(user.groups.front())->name;
}

std::string answerUserTable(DemoRequest& request) {
    const DemoAccounts& accounts = request.world.accounts;
    std::string lines;
    for (const DemoUser& user : accounts.users) {
        lines += join({prefix, std::to_string(user.id), user.name, primaryGroup(accounts, user), user.flags},
                      fieldSeparator);
        lines += lineEnd;
    }
    return longReply(200, "usertable", lines, "End of usertable.");
}

// The ids of the users that have the group in the given list.
std::vector<int> usersWith(const DemoAccounts& accounts, std::vector<int> DemoUser::*list, int group) {
    std::vector<int> ids;
    for (const DemoUser& user : accounts.users) {
        if (std::ranges::find(user.*list, group) != (user.*list).end()) {
            ids.push_back(user.id);
        }
    }
    return ids;
}

std::string answerGroupTable(DemoRequest& request) {
    const DemoAccounts& accounts = request.world.accounts;
    std::string lines;
    for (const DemoGroup& group : accounts.groups) {
        const std::size_t count = usersWith(accounts, &DemoUser::groups, group.id).size();
        lines += join({prefix, std::to_string(group.id), group.name, std::to_string(count)}, fieldSeparator);
        lines += lineEnd;
    }
    return longReply(200, "grouptable", lines, "End of grouptable.");
}

const DemoUser& userOfId(const DemoRequest& request, std::string_view id) {
    const auto number = numberWithin(id, 0, DemoAccounts::highestId);
    const DemoUser* user = number ? request.world.accounts.findUser(static_cast<int>(*number)) : nullptr;
    if (user == nullptr) {
        refuse({"There is no user with the uid ", id, "."});
    }
    return *user;
}

std::string answerUserFile(DemoRequest& request) {
    const DemoUser& user = userOfId(request, request.argument);
    const std::array limits = {user.downLimit, user.upLimit, user.telnetLogins, user.ftpLogins,
                               user.httpLogins};
    return longReply(
        200, "userfile",
        concat({valueLine("username", user.name),
                valueLine("groupname", primaryGroup(request.world.accounts, user)),
                valueLine("flags", user.flags), valueLine("tagline", user.tagline),
                valueLine("homepath", user.homePath), valueLine("vfsfile", user.vfsFile),
                valueLine("ips", join({user.masks.begin(), user.masks.end()}, fieldSeparator)),
                valueLine("limits", numberList(limits)), valueLine("groups", numberList(user.groups)),
                valueLine("admingroups", numberList(user.adminGroups)),
                valueLine("ratios", numberList(user.ratios)),
                valueLine("credits", numberList(user.credits))}),
        "End of userfile.");
}

std::string answerGroupFile(DemoRequest& request) {
    const DemoAccounts& accounts = request.world.accounts;
    const auto id = numberWithin(request.argument, 0, DemoAccounts::highestId);
    const DemoGroup* group = id ? accounts.findGroup(static_cast<int>(*id)) : nullptr;
    if (group == nullptr) {
        refuse({"There is no group with the gid ", request.argument, "."});
    }
    const auto usersIn = [&](std::vector<int> DemoUser::*list) {
        return numberList(usersWith(accounts, list, group->id));
    };
    return longReply(
        200, "groupfile",
        concat({valueLine("groupname", group->name), valueLine("description", group->description),
                valueLine("groupslots", std::to_string(group->groupSlots)),
                valueLine("leechslots", std::to_string(group->leechSlots)),
                valueLine("vfsfile", group->vfsFile), valueLine("members", usersIn(&DemoUser::groups)),
                valueLine("gadmins", usersIn(&DemoUser::adminGroups))}),
        "End of groupfile.");
}

struct WhoRow {
    int uid;
    std::string_view service;
    std::string_view command; // address, host, address of the data connection, last command, last reply code
    std::string_view path;
    std::string_view state; // seconds idle, seconds of session, state (0 idle, 1 download, 2 upload, 3
                            // listing), bytes moved, kB/s
};

constexpr std::array<WhoRow, 12> whoRows = {{
    {1, "ftp", "127.0.0.1 | localhost |  | SITE CorvelExt who | 200", "/", "0 | 95 | 0 | 0 | 0"},
    {2, "ftp", "10.0.0.12 | desk12.example.net | 10.0.0.12 | RETR beach 7.jpg | 150", "/pub/Holiday pictures",
     "0 | 310 | 1 | 1048576 | 812"},
    {3, "ftp", "10.0.0.31 | lab.example.net | 10.0.0.31 | STOR report-13.pdf | 150", "/archive/2021",
     "0 | 44 | 2 | 734003200 | 2450"},
    {4, "ftp", "192.0.2.77 |  | 192.0.2.78 | LIST | 150", "/music", "0 | 12 | 3 | 0 | 0"},
    {5, "ftp", "192.0.2.14 | cable-14.example.org |  | NOOP | 200", "/incoming",
     "845 | 90061 | 0 | 52428800 | 0"},
    {6, "ftp", "198.51.100.9 | nine.example.com | 198.51.100.9 | RETR disc image.iso | 150", "/pub",
     "0 | 7260 | 1 | 4294967296 | 10240"},
    {7, "telnet", "10.0.0.2 | gate.example.net |  | SITE HELP | 214", "/", "61 | 600 | 0 | 0 | 0"},
    {8, "http", "203.0.113.5 | five.example.org | 203.0.113.5 | RETR 01 - Track.flac | 150", "/music/Album 1",
     "0 | 3 | 1 | 20480 | 96"},
    {9, "ftp", "2001:db8::17 | v6.example.net | 2001:db8::17 | STOR Übersicht.txt | 150",
     "/pub/Größe und Maß", "1 | 20 | 2 | 65536 | 33"},
    {10, "ftp", "203.0.113.88 |  |  | PASS | 230", "/", "0 | 1 | 0 | 0 | 0"},
    {2, "ftp", "10.0.0.12 | desk12.example.net | 10.0.0.12 | STAT -a | 211", "/pub/two  blanks",
     "2 | 305 | 3 | 0 | 0"},
    {12, "ftp", "198.51.100.200 | slow.example.com | 198.51.100.200 | STOR backup.tar | 150", "/incoming",
     "0 | 86399 | 2 | 1610612736 | 1"},
}};

// Who is on the demo server and does what: a dozen made-up connections in all states, always the same ones,
// those of users that no longer exist left out. One line each: "200-cid", then behind separators user, group,
// number of the connection, service, ident, the command, real path, path, the state.
std::string answerWho(DemoRequest& request) {
    const DemoAccounts& accounts = request.world.accounts;
    std::string lines;
    int connection = 100;
    for (const WhoRow& row : whoRows) {
        ++connection;
        if (const DemoUser* user = accounts.findUser(row.uid)) {
            lines += join({"200-cid", user->name, primaryGroup(accounts, *user), std::to_string(connection),
                           row.service, user->name, row.command, concat({"/srv/ftp", row.path}), row.path,
                           row.state},
                          fieldSeparator);
            lines += lineEnd;
        }
    }
    return longReply(200, "who", lines, "End of who.");
}

std::string answerSetFlags(DemoRequest& request) {
    const auto [id, flags] = cutWord(request.argument);
    const std::string name = userOfId(request, id).name;
    request.world.accounts.change(name, "flags", flags);
    return reply(200, {"Changed flags of '", name, "'."});
}

std::string answerCopyUser(DemoRequest& request) {
    const std::vector<std::string_view> parts = words(request.argument);
    const auto id = parts.size() == 2 ? numberWithin(parts[0], 0, DemoAccounts::highestId) : std::nullopt;
    if (!id) {
        refuseSyntax(request);
    }
    request.world.accounts.addUser(userOfId(request, std::to_string(*id)), parts[1]);
    return reply(200, {"User '", parts[1], "' added."});
}

constexpr std::array extensionTable = {
    DemoCommand{"USERTABLE", answerUserTable, WhoMay::masters},
    DemoCommand{"GROUPTABLE", answerGroupTable, WhoMay::masters},
    DemoCommand{"USERFILE", answerUserFile, WhoMay::masters, "<uid>"},
    DemoCommand{"GROUPFILE", answerGroupFile, WhoMay::masters, "<gid>"},
    DemoCommand{"WHO", answerWho, WhoMay::masters},
    DemoCommand{"SETFLAGS", answerSetFlags, WhoMay::masters, "<uid> <flags>"},
    DemoCommand{"COPYUSER", answerCopyUser, WhoMay::masters, "<uid> <new name>"},
};

} // namespace

constinit const DemoTable extensionCommands = extensionTable;

} // namespace corvel

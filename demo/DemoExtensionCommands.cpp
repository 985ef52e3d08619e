#include "common/Text.h"
#include "demo/DemoCommands.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>
#include <limits>

namespace corvel {

namespace {

constexpr std::string_view prefix = "200-";

// Appends one value line: the prefix, the key and the value behind a separator.
void appendValue(std::string& lines, std::string_view key, std::string_view value) {
    lines.append(prefix).append(key).append(fieldSeparator).append(value).append(lineEnd);
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

std::string answerUserTable(DemoRequest& request) {
    const DemoAccounts& accounts = request.world.accounts;
    std::string lines;
    for (const DemoUser& user : accounts.users()) {
        const DemoGroup* primary = accounts.findGroup(user.groups.front());
        lines.append(prefix).append(fieldSeparator).append(std::to_string(user.uid));
        for (const std::string_view field :
             {std::string_view(user.name), std::string_view(primary->name), std::string_view(user.flags)}) {
            lines.append(fieldSeparator).append(field);
        }
        lines.append(lineEnd);
    }
    return longReply(200, "usertable", lines, "End of usertable.");
}

// The uids of the users that have gid in the given list.
std::vector<int> usersWith(const DemoAccounts& accounts, std::vector<int> DemoUser::*list, int gid) {
    std::vector<int> uids;
    for (const DemoUser& user : accounts.users()) {
        const std::vector<int>& gids = user.*list;
        if (std::find(gids.begin(), gids.end(), gid) != gids.end()) {
            uids.push_back(user.uid);
        }
    }
    return uids;
}

std::string answerGroupTable(DemoRequest& request) {
    const DemoAccounts& accounts = request.world.accounts;
    std::string lines;
    for (const DemoGroup& group : accounts.groups()) {
        const std::size_t count = usersWith(accounts, &DemoUser::groups, group.gid).size();
        lines.append(prefix).append(fieldSeparator).append(std::to_string(group.gid));
        lines.append(fieldSeparator).append(group.name);
        lines.append(fieldSeparator).append(std::to_string(count)).append(lineEnd);
    }
    return longReply(200, "grouptable", lines, "End of grouptable.");
}

std::optional<int> readId(std::string_view text) {
    const auto number = numberWithin(text, 0, DemoAccounts::highestId);
    return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::string answerUserFile(DemoRequest& request) {
    const DemoAccounts& accounts = request.world.accounts;
    const auto uid = readId(request.argument);
    const DemoUser* user = uid ? accounts.findUser(*uid) : nullptr;
    if (user == nullptr) {
        return reply(550, {"There is no user with the uid ", request.argument, "."});
    }
    std::string lines;
    appendValue(lines, "username", user->name);
    appendValue(lines, "groupname", accounts.findGroup(user->groups.front())->name);
    appendValue(lines, "flags", user->flags);
    appendValue(lines, "tagline", user->tagline);
    appendValue(lines, "homepath", user->homePath);
    appendValue(lines, "vfsfile", user->vfsFile);
    appendValue(lines, "ips", join({user->masks.begin(), user->masks.end()}, fieldSeparator));
    appendValue(lines, "limits",
                numberList(std::array{user->downLimit, user->upLimit, user->telnetLogins, user->ftpLogins,
                                      user->httpLogins}));
    appendValue(lines, "groups", numberList(user->groups));
    appendValue(lines, "admingroups", numberList(user->adminGroups));
    appendValue(lines, "ratios", numberList(user->ratios));
    appendValue(lines, "credits", numberList(user->credits));
    return longReply(200, "userfile", lines, "End of userfile.");
}

std::string answerGroupFile(DemoRequest& request) {
    const DemoAccounts& accounts = request.world.accounts;
    const auto gid = readId(request.argument);
    const DemoGroup* group = gid ? accounts.findGroup(*gid) : nullptr;
    if (group == nullptr) {
        return reply(550, {"There is no group with the gid ", request.argument, "."});
    }
    std::string lines;
    appendValue(lines, "groupname", group->name);
    appendValue(lines, "description", group->description);
    appendValue(lines, "groupslots", std::to_string(group->groupSlots));
    appendValue(lines, "leechslots", std::to_string(group->leechSlots));
    appendValue(lines, "vfsfile", group->vfsFile);
    appendValue(lines, "members", numberList(usersWith(accounts, &DemoUser::groups, group->gid)));
    appendValue(lines, "gadmins", numberList(usersWith(accounts, &DemoUser::adminGroups, group->gid)));
    return longReply(200, "groupfile", lines, "End of groupfile.");
}

struct WhoRow {
    int uid;
    std::string_view service;
    std::string_view address;
    std::string_view host;
    std::string_view dataAddress;
    std::string_view lastCommand;
    int lastReply;
    std::string_view path;
    int idleSeconds;
    int sessionSeconds;
    int state;
    std::int64_t bytes;
    int speed;
};

constexpr std::array<WhoRow, 12> whoRows = {{
    {1, "ftp", "127.0.0.1", "localhost", "", "SITE CorvelExt who", 200, "/", 0, 95, 0, 0, 0},
    {2, "ftp", "10.0.0.12", "desk12.example.net", "10.0.0.12", "RETR beach 7.jpg", 150,
     "/pub/Holiday pictures", 0, 310, 1, 1'048'576, 812},
    {3, "ftp", "10.0.0.31", "lab.example.net", "10.0.0.31", "STOR report-13.pdf", 150, "/archive/2021", 0, 44,
     2, 734'003'200, 2'450},
    {4, "ftp", "192.0.2.77", "", "192.0.2.78", "LIST", 150, "/music", 0, 12, 3, 0, 0},
    {5, "ftp", "192.0.2.14", "cable-14.example.org", "", "NOOP", 200, "/incoming", 845, 90'061, 0, 52'428'800,
     0},
    {6, "ftp", "198.51.100.9", "nine.example.com", "198.51.100.9", "RETR disc image.iso", 150, "/pub", 0,
     7'260, 1, 4'294'967'296, 10'240},
    {7, "telnet", "10.0.0.2", "gate.example.net", "", "SITE HELP", 214, "/", 61, 600, 0, 0, 0},
    {8, "http", "203.0.113.5", "five.example.org", "203.0.113.5", "RETR 01 - Track.flac", 150,
     "/music/Album 1", 0, 3, 1, 20'480, 96},
    {9, "ftp", "2001:db8::17", "v6.example.net", "2001:db8::17", "STOR Übersicht.txt", 150,
     "/pub/Größe und Maß", 1, 20, 2, 65'536, 33},
    {10, "ftp", "203.0.113.88", "", "", "PASS", 230, "/", 0, 1, 0, 0, 0},
    {2, "ftp", "10.0.0.12", "desk12.example.net", "10.0.0.12", "STAT -a", 211, "/pub/two  blanks", 2, 305, 3,
     0, 0},
    {12, "ftp", "198.51.100.200", "slow.example.com", "198.51.100.200", "STOR backup.tar", 150, "/incoming",
     0, 86'399, 2, 1'610'612'736, 1},
}};

// Who is on the demo server and does what: a dozen made-up connections in all states, always the same ones,
// those of users that no longer exist left out. One line each, ended by CR LF: "200-cid", then behind
// separators user, group, number of the connection, service, ident, address, host, address of the data
// connection, last command, last reply code, real path, path, seconds idle, seconds of session, state (0
// idle, 1 download, 2 upload, 3 listing), bytes moved, kB/s.
std::string whoLines(const DemoAccounts& accounts) {
    std::string lines;
    int connection = 100;
    for (const WhoRow& row : whoRows) {
        ++connection;
        const DemoUser* user = accounts.findUser(row.uid);
        if (user == nullptr) {
            continue;
        }
        const std::string number = std::to_string(connection);
        const std::string lastReply = std::to_string(row.lastReply);
        const std::string realPath = "/srv/ftp" + std::string(row.path);
        const std::string idle = std::to_string(row.idleSeconds);
        const std::string session = std::to_string(row.sessionSeconds);
        const std::string state = std::to_string(row.state);
        const std::string bytes = std::to_string(row.bytes);
        const std::string speed = std::to_string(row.speed);
        const std::string& group = accounts.findGroup(user->groups.front())->name;
        lines += join({"200-cid", user->name, group, number, row.service, user->name, row.address, row.host,
                       row.dataAddress, row.lastCommand, lastReply, realPath, row.path, idle, session, state,
                       bytes, speed},
                      fieldSeparator);
        lines += lineEnd;
    }
    return lines;
}

std::string answerWho(DemoRequest& request) {
    return longReply(200, "who", whoLines(request.world.accounts), "End of who.");
}

std::string answerSetFlags(DemoRequest& request) {
    const auto [id, flags] = cutWord(request.argument);
    const auto uid = readId(id);
    const DemoUser* user = uid ? request.world.accounts.findUser(*uid) : nullptr;
    if (user == nullptr) {
        return reply(550, {"There is no user with the uid ", id, "."});
    }
    const std::string name = user->name;
    return changeReply(request.world.accounts.changeUser(name, "flags", flags),
                       {"Changed flags of '", name, "'."});
}

std::string answerCopyUser(DemoRequest& request) {
    const std::vector<std::string_view> parts = words(request.argument);
    const auto uid = readId(parts.empty() ? std::string_view() : parts.front());
    if (parts.size() != 2 || !uid) {
        return syntaxReply(request);
    }
    return changeReply(request.world.accounts.copyUser(*uid, parts[1]), {"User '", parts[1], "' added."});
}

constexpr DemoCommand masterCommand(std::string_view verb, std::string (*answer)(DemoRequest&),
                                    Argument argument, std::string_view syntax = {}) {
    return {
        .verb = verb, .answer = answer, .whoMay = WhoMay::masters, .argument = argument, .syntax = syntax};
}

constexpr std::array commands = {
    masterCommand("USERTABLE", answerUserTable, Argument::optional),
    masterCommand("GROUPTABLE", answerGroupTable, Argument::optional),
    masterCommand("USERFILE", answerUserFile, Argument::needed, "<uid>"),
    masterCommand("GROUPFILE", answerGroupFile, Argument::needed, "<gid>"),
    masterCommand("WHO", answerWho, Argument::optional),
    masterCommand("SETFLAGS", answerSetFlags, Argument::needed, "<uid> <flags>"),
    masterCommand("COPYUSER", answerCopyUser, Argument::needed, "<uid> <new name>"),
};

} // namespace

std::span<const DemoCommand> extensionCommands() {
    return commands;
}

} // namespace corvel

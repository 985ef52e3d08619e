#include "demo/DemoCommands.h"

#include "browser/Listing.h"
#include "browser/Navigation.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

// One command and the pattern that its whole reply must match; the last CR LF is left out of both.
struct Exchange {
    std::string command;
    std::string pattern;
};

std::string ask(DemoWorld& world, DemoClient& client, std::string_view command) {
    std::string reply = answerCommand(world, client, command);
    EXPECT_TRUE(reply.ends_with("\r\n") && isValidUtf8(reply)) << command;
    reply.resize(reply.size() - 2);
    return reply;
}

void play(DemoWorld& world, DemoClient& client, const std::vector<Exchange>& exchanges) {
    for (const Exchange& exchange : exchanges) {
        const std::string reply = ask(world, client, exchange.command);
        EXPECT_TRUE(matchesPattern(reply, exchange.pattern)) << "> " << exchange.command << "\n"
                                                             << reply << "\nwanted: " << exchange.pattern;
    }
}

DemoClient loggedIn(DemoWorld& world, const std::string& name = "demo") {
    DemoClient client;
    play(world, client, {{"USER " + name, "331 *"}, {"PASS " + name, "*230 *"}});
    return client;
}

// A reply that has line as one of its lines.
std::string holding(const std::string& line) {
    return "*\r\n" + line + "\r\n*";
}

// bob is the user with uid 3, in group friends (3); staff is 1, music 5.
const std::string readBob = "SITE CorvelExt userfile 3";

TEST(DemoCommands, LetNobodyInWithoutAPassword) {
    DemoWorld world(60, 0);
    DemoClient client;
    play(world, client,
         {{"CWD /", "530 *"},
          {"SITE CHMOD 755 /", "530 *"},
          {"PASS demo", "503 *"},
          {"USER nobody", "331 *"},
          {"PASS nobody", "530 Login incorrect."},
          {"uSeR demo", "331 *"},
          {"pass demo", "*230 *"}});
}

TEST(DemoCommands, RefuseAndChangeNothing) {
    using namespace std::string_literals;
    DemoWorld world(60, 0);
    DemoClient client = loggedIn(world);
    const auto state = [&] {
        std::string all;
        for (const char* const command :
             {"PWD", "STAT -a /", "STAT -a /pub", "SITE CorvelExt usertable", "SITE CorvelExt grouptable",
              "SITE CorvelExt userfile 3", "SITE CorvelExt groupfile 3", "SITE chattr +h \"pub\""}) {
            all += ask(world, client, command);
        }
        return all;
    };
    const std::string before = state();
    play(world, client,
         {{"", "500 *"},
          {" NOOP", "500 *"},
          {"FROB x", "500 'FROB': *"},
          {"SITE", "501 *"},
          {"LIST", "502 *"},
          {"CWD a\0b"s, "500 *"},
          {"MKD a\nb", "500 *"},
          {std::string(4096, 'A'), "500 *"},
          {"CWD /private/x", "550 *: Permission denied."},
          {"CWD /pub/nowhere", "550 *: No such file *"},
          {"CWD /pub/circle", "550 *: Too many levels *"},
          {"CWD /welcome.txt/..", "550 *: Not a directory."},
          {"MKD /dev/x", "550 *: Permission denied."},
          {"MKD /pub", "550 *: File exists."},
          {"MKD " + std::string(256, 'y'), "550 *: File name too long."},
          {"RMD /", "550 *"},
          {"RMD /current", "550 *: Not a directory."},
          {"DELE /pub/empty", "550 *: Is a directory."},
          {"RNTO x", "503 *"},
          {"RNFR /pub", "350 *"},
          {"RNTO /pub/empty/x", "550 *: Invalid argument."},
          {"SITE CHMOD 888 /pub", "501 *"},
          {"SITE CHMOD 777 /dev/null", "550 *: Operation not permitted."},
          {"site chattr +h \"pub\" \" -nobody\"", "550 *"},
          {"site nuke / 3 y", "550 *"},
          {"site nuke /pub 101 y", "501 *"},
          {"SITE change nobody flags 3", "550 User 'nobody' does not exist."},
          {"SITE change bob colour red", "550 Unknown property 'colour'."},
          {"SITE change bob", "501 *"},
          {"SITE change bob flags 3-", "550 Bad value for flags."},
          {"SITE change bob passwd two words", "550 *"},
          {"SITE change bob logins 32768 ftp", "550 *"},
          {"SITE change bob credits 9 10", "550 *"},
          {"SITE change friends groupslots 1 x", "550 *"},
          {"SITE addip bob a@b *@10.0.0.2", "550 *already."},
          {"SITE delip bob *@10.0.0.2 a@b", "550 *no mask 'a@b'."},
          {"SITE chgrp bob staff none", "550 *"},
          {"SITE chgrp bob friends", "550 *has to stay in one group."},
          {"SITE renuser bob alice", "550 *"},
          {"SITE deluser demo", "550 *your own*"},
          {"SITE gadduser staff bob pw a@b", "550 *exists already."},
          {"SITE grpdel friends", "550 Group 'friends' still has members: 15."},
          {"SITE CorvelExt copyuser 3 alice", "550 *"},
          {"SITE CorvelExt userfile 99", "550 *"}});
    EXPECT_EQ(state(), before);
}

TEST(DemoCommands, ChangeTheTree) {
    DemoWorld world(60, 0);
    DemoClient client = loggedIn(world);
    play(world, client,
         {{"CWD ../../..", "250 *"},
          {"PWD", "257 \"/\" *"},
          {"CWD /pub/two  blanks", "250 *"},
          {"CWD /pub/latest", "250 *"},
          {"PWD", "257 \"/archive/2021\" *"},
          {"CWD /", "250 *"},
          {"MKD a\"b", "257 \"/a\"\"b\" *"},
          {"MKD \xc3\xa4", "257 *"},
          {"MKD new one", "257 \"/new one\" *"},
          {"STAT -a", "*drwxr-xr-x   2 demo     staff * new one\r\n*"},
          {"RNFR new one", "350 *"},
          {"RNTO pub/newer", "250 *"},
          {"RMD /pub/newer/", "250 *"},
          {"RMD /pub/newer", "550 *"},
          {"SITE CHMOD 640 /pub/zero", "200 *"},
          {"STAT /pub/zero", "*\r\n-rw-r----- *"},
          {"SITE CHMOD 0 /pub", "200 *"},
          {"STAT -a /pub", "550 *"},
          {"SITE CHMOD 755 /pub", "200 *"},
          {"site chattr +h \"pub\"", "200-CHATTR: <not set>\r\n200 *"},
          {"site chattr +h \"pub\" \" -bob =staff\"", "200 *"},
          {"site chattr +h \"pub\"", "200-CHATTR: -bob =staff\r\n200 *"},
          {"CWD /music", "250 *"},
          {"site nuke Album 1 3 bad tags",
           "200-NUKE of Album 1: bad tags\r\n200- demo loses 39729 kB.\r\n200 *"},
          {"CWD NUKED-Album 1", "250 *"}});
    DemoClient bob = loggedIn(world, "bob");
    DemoClient carol = loggedIn(world, "carol");
    EXPECT_TRUE(matchesPattern(ask(world, bob, "STAT -a /"), "* pub\r\n*"));
    EXPECT_FALSE(matchesPattern(ask(world, carol, "STAT -a /"), "* pub\r\n*"));
}

// What the lines of a user's or a group's file become by a change.
TEST(DemoCommands, ChangeAccounts) {
    const std::vector<std::vector<Exchange>> cases = {
        {{"site change bob tagline  a | b ", "200 *"}, {readBob, holding("200-tagline |  a | b ")}},
        {{"SITE change bob speedlimit 11 12", "200 *"},
         {readBob, holding("200-limits | 11 | 12 | 2 | 3 | 0")}},
        {{"SITE change bob ratio 9 2", "200 *"},
         {readBob, holding("200-ratios | 3 | 1 | 9 | 1 | 0 | 1 | 0 | 1 | 0 | 1")}},
        {{"SITE CorvelExt setflags 3 3M", "200 *"}, {readBob, holding("200-flags | 3M")}},
        {{"SITE change bob admingroup music", "200 *"}, {readBob, holding("200-admingroups | 3 | 5")}},
        {{"SITE addip bob a@b c@d", "200 *"}, {readBob, holding("200-ips | *@10.0.0.2 | a@b | c@d")}},
        {{"SITE chgrp bob staff friends", "200 *"}, {readBob, holding("200-groupname | staff")}},
        {{"SITE gadduser music newbie secret a@b", "200 *"},
         {"SITE CorvelExt usertable", holding("200- | 61 | newbie | music | 3")},
         {"SITE CorvelExt groupfile 5", "*200-members *| 61\r\n*"}},
        {{"SITE DELUSER bob", "200 *"},
         {readBob, "550 *"},
         {"SITE CorvelExt grouptable", holding("200- | 3 | friends | 14")}},
        {{"SITE CorvelExt copyuser 3 twin", "200 *"},
         {"SITE CorvelExt userfile 61", "*200-username | twin\r\n200-groupname | friends\r\n*"}},
        {{"SITE grpadd guild some people", "200 *"},
         {"site change guild groupslots 12 -1", "200 *"},
         {"SITE grpren guild lodge", "200 *"},
         {"SITE CorvelExt groupfile 9",
          "200-groupfile\r\n200-groupname | lodge\r\n200-description | some people\r\n200-groupslots | 12\r\n"
          "200-leechslots | -1\r\n200-vfsfile | \r\n200-members | \r\n200-gadmins | \r\n200 *"},
         {"SITE GRPDEL lodge", "200 *"}},
        {{"SITE renuser demo boss", "200 *"},
         {"SITE grpren staff crew", "200 *"},
         {"STAT /welcome.txt", "*1 boss     crew *"},
         {"MKD /still mine", "257 *"}},
    };
    for (const std::vector<Exchange>& exchanges : cases) {
        DemoWorld world(60, 0);
        DemoClient client = loggedIn(world);
        play(world, client, exchanges);
    }
}

TEST(DemoCommands, AreForMasterUsersWhereAccountsAreConcerned) {
    DemoWorld world(60, 0);
    DemoClient demo = loggedIn(world);
    DemoClient bob = loggedIn(world, "bob");
    for (const char* const command :
         {"SITE CorvelExt usertable", "SITE change bob flags 3M", "SITE nuke /pub 1 x"}) {
        play(world, bob, {{command, "550 Access denied*"}});
    }
    play(world, demo, {{"SITE change bob flags 3M", "200 *"}});
    play(world, bob, {{"SITE CorvelExt usertable", "200-*"}});
    play(world, demo, {{"SITE deluser bob", "200 *"}});
    play(world, bob, {{"PWD", "530 *"}});
}

// Walks every directory that demo may see: what the server lists, the browser of the program reads.
TEST(DemoCommands, ListTheWholeTreeInLinesThatCanBeRead) {
    DemoWorld world(60, 0);
    DemoClient client = loggedIn(world);
    std::vector<std::string> directories = {"/"};
    std::set<char> types;
    for (std::size_t i = 0; i < directories.size(); ++i) {
        const std::string reply = ask(world, client, "STAT -a " + directories[i]);
        const std::vector<std::string_view> lines = split(reply, lineEnd);
        EXPECT_EQ(lines.front(), "211-status of " + directories[i] + ":");
        const BrowserListing listing = ParseDirectoryListing(lines, {.mergeBlanks = true});
        EXPECT_EQ(listing.entries.size(), lines.size() - 3) << "all but the first, the last and the dot";
        for (const BrowserEntry& entry : listing.entries) {
            types.insert(entry.access.front());
            const auto target = navigationTarget(directories[i], entry.name, entry.access);
            if (target && entry.access.front() == 'd' && entry.name != ".." && entry.name != "private" &&
                entry.name != "alice") {
                directories.push_back(*target);
            }
        }
    }
    EXPECT_EQ(types, (std::set<char>{'-', 'd', 'l', 'c', 'b', 'p', 's'}));
    const std::string who = ask(world, client, "SITE CorvelExt who");
    for (const std::string_view line : split(who, lineEnd)) {
        EXPECT_TRUE(split(line, fieldSeparator).size() == 18 || !line.starts_with("200-cid")) << line;
    }
}

} // namespace
} // namespace corvel

#include "admin/mdlUsersGroups.h"
#include "common/Text.h"
#include "demo/DemoCommands.h"
#include "demo/Dialogue.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace corvel {
namespace {

// bob is the user with uid 3, in group friends (3); staff is 1, music 5.
const std::string readBob = "SITE CorvelExt userfile 3";
const std::string readFriends = "SITE CorvelExt groupfile 3";

// A reply that has line as one of its lines.
std::string holding(const std::string& line) {
    return "*\r\n" + line + "\r\n*";
}

TEST(DemoAccountCommands, ChangeOnePropertyOfAUser) {
    struct Row {
        const char* name;
        std::string change;
        std::string line;
    };
    const std::vector<Row> rows = {
        {"flags", "site change bob flags 3M", "200-flags | 3M"},
        {"tagline with every blank", "SITE change bob tagline  a | b ", "200-tagline |  a | b "},
        {"no tagline", "SITE change bob tagline", "200-tagline | "},
        {"download limit comes first", "SITE change bob speedlimit 11 12",
         "200-limits | 11 | 12 | 2 | 3 | 0"},
        {"the other spelling", "site change bob speedlimits -1 0", "200-limits | -1 | 0 | 2 | 3 | 0"},
        {"ratio", "SITE change bob ratio 9 2", "200-ratios | 3 | 1 | 9 | 1 | 0 | 1 | 0 | 1 | 0 | 1"},
        {"credits of one section", "SITE change bob credits 922337203685477 9",
         "200-credits | 4608 *| 922337203685477"},
        {"credits of the first", "site change bob credits 45000", "200-credits | 45000 | 9216 *"},
        {"verb and property in any case", "sItE cHaNgE bob TAGLINE x", "200-tagline | x"},
        {"administrator of a group", "SITE change bob admingroup music", "200-admingroups | 3 | 5"},
        {"administrator no longer", "SITE change bob admingroup friends", "200-admingroups | "},
        {"more masks", "SITE addip bob a@b c@d", "200-ips | *@10.0.0.2 | a@b | c@d"},
        {"no masks", "SITE delip bob *@10.0.0.2", "200-ips | "},
        {"groups toggled, blank behind", "SITE chgrp bob friends music ", "200-groups | 5"},
        {"next group becomes the primary", "SITE chgrp bob staff friends", "200-groupname | staff"},
    };
    for (const Row& row : rows) {
        DemoWorld world(60, 0);
        DemoClient client = loggedIn(world);
        const std::string before = ask(world, client, readBob);
        EXPECT_FALSE(matchesPattern(before, holding(row.line))) << row.name;
        const std::string answer = ask(world, client, row.change);
        EXPECT_TRUE(matchesPattern(answer, "200 *")) << row.name << "\n" << answer;
        const std::string after = ask(world, client, readBob);
        EXPECT_TRUE(matchesPattern(after, holding(row.line))) << row.name << "\n" << after;
    }
}

TEST(DemoAccountCommands, RefuseAndChangeNothing) {
    const std::vector<Exchange> rows = {
        {"SITE change nobody flags 3", "550 User 'nobody' does not exist."},
        {"SITE change bob colour red", "550 Unknown property 'colour'."},
        {"SITE change bob", "501 *"},
        {"SITE change bob flags 3-", "550 Bad value for flags."},
        {"SITE change bob homedir relative", "550 *"},
        {"SITE change bob passwd ", "550 *"},
        {"SITE change bob passwd two words", "550 Bad value for passwd."},
        {"SITE change bob logins 7", "550 *"},
        {"SITE change bob logins 7 gopher", "550 *"},
        {"SITE change bob logins 32768 ftp", "550 *"},
        {"SITE change bob speedlimit 1", "550 *"},
        {"SITE change bob speedlimit 1 2147483648", "550 *"},
        {"SITE change bob ratio 1 10", "550 *"},
        {"SITE change bob credits 99999999999999999999 0", "550 *"},
        {"SITE change bob admingroup none", "550 Group 'none' does not exist."},
        {"SITE change friends groupslots 1 x", "550 *"},
        {"SITE addip bob nomask", "550 *"},
        {"SITE addip bob a@b *@10.0.0.2", "550 *is there already."},
        {"SITE addip bob 1@a 2@a 3@a 4@a 5@a 6@a 7@a 8@a 9@a 10@a", "550 *"},
        {"SITE delip bob *@10.0.0.2 a@b", "550 *no mask 'a@b'."},
        {"SITE chgrp bob staff none", "550 *"},
        {"SITE chgrp bob friends", "550 *has to stay in one group."},
        {"SITE renuser bob alice", "550 *exists already."},
        {"SITE renuser bob a:b", "550 *no valid name."},
        {"SITE deluser demo", "550 *your own*"},
        {"SITE gadduser none new pw a@b", "550 Group 'none' does not exist."},
        {"SITE gadduser staff bob pw a@b", "550 User 'bob' exists already."},
        {"SITE gadduser staff new", "501 *"},
        {"SITE grpadd friends", "550 Group 'friends' exists already."},
        {"SITE grpren friends staff", "550 *exists already."},
        {"SITE grpdel friends", "550 Group 'friends' still has members: 15."},
        {"SITE CorvelExt setflags 99 3", "550 *"},
        {"SITE CorvelExt copyuser 3 alice", "550 *exists already."},
        {"SITE CorvelExt userfile 99", "550 *"},
        {"SITE CorvelExt frob", "500 *"},
    };
    DemoWorld world(60, 0);
    DemoClient client = loggedIn(world);
    const auto state = [&] {
        std::string all = ask(world, client, "SITE CorvelExt usertable");
        all += ask(world, client, "SITE CorvelExt grouptable") + ask(world, client, readBob);
        return all + ask(world, client, readFriends);
    };
    const std::string before = state();
    for (const Exchange& row : rows) {
        const std::string answer = ask(world, client, row.command);
        EXPECT_TRUE(matchesPattern(answer, row.pattern)) << row.command << "\n" << answer;
        EXPECT_EQ(state(), before) << row.command;
    }
}

TEST(DemoAccountCommands, AddAndRemoveAccounts) {
    play({
        {"user added with the next uid",
         {{"SITE gadduser music newbie secret a@b c@d", "200 *"},
          {"SITE CorvelExt usertable", holding("200- | 61 | newbie | music | 3")},
          {"SITE CorvelExt userfile 61", holding("200-ips | a@b | c@d")},
          {"SITE CorvelExt groupfile 5", "*200-members *| 61\r\n*"}}},
        {"user deleted",
         {{"SITE CorvelExt grouptable", holding("200- | 3 | friends | 15")},
          {"SITE DELUSER bob", "200 *"},
          {readBob, "550 *"},
          {"SITE CorvelExt grouptable", holding("200- | 3 | friends | 14")}}},
        {"user copied",
         {{"SITE CorvelExt copyuser 3 twin", "200 *"},
          {"SITE CorvelExt userfile 61",
           "*200-username | twin\r\n200-groupname | friends\r\n200-flags | 3G\r\n*"},
          {readBob, holding("200-username | bob")}}},
        {"group added, changed, renamed, deleted",
         {{"SITE grpadd guild some people", "200 *"},
          {"SITE CorvelExt grouptable", holding("200- | 9 | guild | 0")},
          {"site change guild groupslots 12 -1", "200 *"},
          {"site change guild groupdescription none  of you", "200 *"},
          {"site change guild groupvfsfile /etc/guild", "200 *"},
          {"SITE grpren guild lodge", "200 *"},
          {"SITE CorvelExt groupfile 9",
           "200-groupfile\r\n200-groupname | lodge\r\n200-description | none  of you\r\n200-groupslots | "
           "12\r\n"
           "200-leechslots | -1\r\n200-vfsfile | /etc/guild\r\n200-members | \r\n200-gadmins | \r\n200 *"},
          {"SITE change bob admingroup lodge", "200 *"},
          {"SITE GRPDEL lodge", "200 *"},
          {"SITE CorvelExt groupfile 9", "550 *"},
          {readBob, holding("200-admingroups | 3")}}},
        {"members and administrators of a group",
         {{"SITE chgrp alice friends", "200 *"},
          {"SITE change alice admingroup friends", "200 *"},
          {readFriends, "*200-members | 2 | 3 *200-gadmins | 2 | 3 *"}}},
        {"renaming takes the files along",
         {{"SITE renuser demo boss", "200 *"},
          {"SITE grpren staff crew", "200 *"},
          {"STAT /welcome.txt", "*1 boss     crew *"},
          {"MKD /still mine", "257 *"}}},
    });
}

TEST(DemoAccountCommands, AreForMasterUsers) {
    DemoWorld world(60, 0);
    DemoClient demo = loggedIn(world);
    DemoClient bob = loggedIn(world, "bob");
    for (const char* command :
         {"SITE CorvelExt usertable", "SITE CorvelExt who", "SITE gadduser staff x y a@b",
          "SITE change bob flags 3M", "SITE config rehash", "SITE nuke /pub 1 x"}) {
        EXPECT_TRUE(matchesPattern(ask(world, bob, command), "550 Access denied*")) << command;
    }
    EXPECT_TRUE(matchesPattern(ask(world, demo, "SITE change bob flags 3M"), "200 *"));
    EXPECT_TRUE(matchesPattern(ask(world, bob, "SITE CorvelExt usertable"), "200-*"));
    EXPECT_TRUE(matchesPattern(ask(world, demo, "SITE change bob passwd secret"), "200 *"));
    DemoClient again;
    ask(world, again, "USER bob");
    EXPECT_TRUE(matchesPattern(ask(world, again, "PASS bob"), "530 *"));
    ask(world, again, "USER bob");
    EXPECT_TRUE(matchesPattern(ask(world, again, "PASS secret"), "*230 *"));
    EXPECT_TRUE(matchesPattern(ask(world, demo, "SITE deluser bob"), "200 *"));
    EXPECT_TRUE(matchesPattern(ask(world, bob, "PWD"), "530 *"));
}

std::vector<std::string_view> innerLines(std::string_view reply) {
    std::vector<std::string_view> lines = split(reply, lineEnd);
    EXPECT_GE(lines.size(), 2U);
    EXPECT_TRUE(matchesPattern(lines.back(), "200 *"));
    return {lines.begin() + 1, lines.end() - 1};
}

TEST(DemoAccountCommands, GiveTablesOfAnySize) {
    for (const int count : {1, 60, 1000}) {
        DemoWorld world(count, 0);
        DemoClient client = loggedIn(world);
        const std::string reply = ask(world, client, "SITE CorvelExt usertable");
        std::set<std::string> names;
        for (const clsUser& user : ParseUserTable(1, innerLines(reply)).table) {
            names.insert(user.sName);
        }
        EXPECT_EQ(names.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(innerLines(ask(world, client, "SITE CorvelExt grouptable")).size(), 8U);
    }
}

TEST(DemoAccountCommands, TellWhoIsThere) {
    DemoWorld world(60, 0);
    DemoClient client = loggedIn(world);
    const std::string reply = ask(world, client, "SITE CorvelExt who");
    std::string states;
    for (const std::string_view line : innerLines(reply)) {
        const std::vector<std::string_view> fields = split(line, fieldSeparator);
        ASSERT_EQ(fields.size(), 18U) << line;
        EXPECT_EQ(fields[0], "200-cid");
        EXPECT_NE(world.accounts.findUser(fields[1]), nullptr) << line;
        EXPECT_EQ(fields[15].size(), 1U);
        states += fields[15];
        // Only what is moved has a speed.
        EXPECT_EQ(fields[17] == "0", fields[15] == "0" || fields[15] == "3") << line;
    }
    EXPECT_EQ(states.size(), 12U);
    for (const char state : {'0', '1', '2', '3'}) {
        EXPECT_NE(states.find(state), std::string::npos) << state;
    }
    ask(world, client, "SITE deluser alice");
    EXPECT_EQ(innerLines(ask(world, client, "SITE CorvelExt who")).size(), 10U);
}

TEST(DemoSiteCommands, HideDirectories) {
    const std::string notSet = "200-CHATTR: <not set>\r\n200 *";
    play({
        {"asked, set, cleared",
         {{"site chattr +h \"pub\"", notSet},
          {"site chattr +h \"pub\" \" -bob =staff\"", "200 *"},
          {"site chattr +h \"pub\"", "200-CHATTR: -bob =staff\r\n200 *"},
          {"site chattr +h \"pub\" \" 3M\"", "200 *"},
          {"SITE CHATTR +H pub", "200-CHATTR: 3M\r\n200 *"},
          {"site chattr -h \"pub\"", "200 *"},
          {"site chattr +h \"pub\"", notSet}}},
        {"blanks and quotes in names",
         {{"MKD a \"b\" c", "257 *"},
          {"site chattr +h \"a \"b\" c\" \" =staff\"", "200 *"},
          {"site chattr +h \"a \"b\" c\"", "200-CHATTR: =staff\r\n*"}}},
        {"no such people",
         {{"site chattr +h \"pub\" \" -nobody\"", "550 *"},
          {"site chattr +h \"pub\" \" 3:\"", "550 *"},
          {"site chattr +h \"pub\" \"\"", "550 *"},
          {"site chattr +h \"pub\"", notSet}}},
        {"directories alone",
         {
             {"site chattr +h \"welcome.txt\"", "550 *: Not a directory."},
         }},
    });
}

TEST(DemoSiteCommands, ShowHiddenDirectoriesToWhomTheyAreMeantFor) {
    struct Row {
        const char* name;
        const char* user;
        const char* hidingWords;
        bool isShown;
    };
    const std::vector<Row> rows = {
        {"named user", "bob", "-bob", true}, {"other user", "bob", "-alice", false},
        {"group", "bob", "=friends", true},  {"one of several", "bob", "9 -alice =friends", true},
        {"flag", "bob", "G", true},          {"master user", "demo", "-alice", true},
    };
    for (const Row& row : rows) {
        DemoWorld world(60, 0);
        DemoClient demo = loggedIn(world);
        DemoClient user = loggedIn(world, row.user);
        const std::string all = ask(world, user, "STAT -a /");
        EXPECT_TRUE(matchesPattern(all, "* pub\r\n*")) << row.name;
        ask(world, demo, std::string("site chattr +h \"pub\" \" ") + row.hidingWords + "\"");
        EXPECT_EQ(matchesPattern(ask(world, user, "STAT -a /"), "* pub\r\n*"), row.isShown) << row.name;
    }
}

TEST(DemoSiteCommands, NukeADirectory) {
    play({
        {"renamed, its owner pays",
         {{"SITE CorvelExt userfile 1", holding("200-credits | 1536 | *")},
          {"CWD /music", "250 *"},
          {"site nuke Album 1 3 bad tags",
           "200-NUKE of Album 1: bad tags\r\n200- demo loses 39729 kB.\r\n200 *"},
          {"SITE CorvelExt userfile 1", holding("200-credits | -38193 | *")},
          {"CWD Album 1", "550 *"},
          {"CWD NUKED-Album 1", "250 *"}}},
        {"bad orders",
         {{"site nuke /pub 3", "501 *"},
          {"site nuke /pub 0 y", "501 *"},
          {"site nuke /pub 101 y", "501 *"},
          {"site nuke /welcome.txt 3 y", "550 *: Not a directory."},
          {"site nuke / 3 y", "550 *"}}},
    });
}

} // namespace
} // namespace corvel

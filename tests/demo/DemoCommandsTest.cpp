#include "demo/DemoCommands.h"

#include "browser/BrowserCommands.h"
#include "browser/Listing.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

// A server and a client on it, logged in unless without a name.
struct Session {
    explicit Session(const std::string& name = "demo") {
        if (!name.empty()) {
            play({{"USER " + name, "331 *"}, {"PASS " + name, "*230 *"}});
        }
    }

    std::string ask(std::string_view command) {
        std::string reply = answerCommand(world, client, command);
        EXPECT_TRUE(reply.ends_with("\r\n") && isValidUtf8(reply)) << command;
        reply.resize(reply.size() - 2);
        return reply;
    }

    // A command and the pattern that its whole reply but for the last CR LF must match.
    struct Exchange {
        std::string command;
        std::string pattern;
    };

    void play(const std::vector<Exchange>& exchanges) {
        for (const auto& [command, pattern] : exchanges) {
            const std::string reply = ask(command);
            EXPECT_TRUE(matchesPattern(reply, pattern)) << "> " << command << "\n"
                                                        << reply << "\nwanted: " << pattern;
        }
    }

    DemoWorld world{60, 0};
    DemoClient client;
};

TEST(DemoCommands, AreForWhoeverMayUseThem) {
    Session nobody("");
    nobody.play(
        {{"CWD /", "530 *"}, {"PASS demo", "503 *"}, {"USER nobody", "331 *"}, {"PASS nobody", "530 *"}});
    Session bob("bob");
    bob.play({{"PWD", "257 *"},
              {"SITE CorvelExt usertable", "550 Access denied*"},
              {"SITE change bob flags 3M", "550 Access denied*"},
              {"uSeR demo", "331 *"},
              {"pass demo", "*230 *"},
              {"SITE CorvelExt usertable", "200-*"}});
}

TEST(DemoCommands, RefuseAndChangeNothing) {
    Session session;
    const auto state = [&] {
        std::string all;
        for (const char* const command :
             {"PWD", "STAT -a /", "STAT -a /pub", "SITE CorvelExt usertable", "SITE CorvelExt grouptable",
              "SITE CorvelExt userfile 3", "SITE CorvelExt groupfile 3"}) {
            all += session.ask(command);
        }
        return all;
    };
    const std::string before = state();
    session.play({{"FROB x", "500 'FROB': *"},
                  {"MKD a\nb", "500 *"},
                  {"CWD /private/x", "550 /private/x: Permission denied."},
                  {"CWD /pub/circle", "550 *: Too many levels *"},
                  {"RNTO x", "503 *"},
                  {"RNFR /pub", "350 *"},
                  {"RNTO /pub/empty/x", "550 /pub/empty/x: Invalid argument."},
                  {"site chattr +h \"pub\" \" -nobody\"", "550 *"},
                  {"SITE change bob colour red", "550 Unknown property 'colour'."},
                  {"SITE change bob logins 32768 ftp", "550 Bad value for logins."},
                  {"SITE delip bob *@10.0.0.2 a@b", "550 *no mask 'a@b'."},
                  {"SITE chgrp bob friends", "550 *has to stay in one group."},
                  {"SITE deluser demo", "550 *your own*"},
                  {"SITE grpdel friends", "550 Group 'friends' still has members: 15."},
                  {"SITE CorvelExt userfile 99", "550 *"}});
    EXPECT_EQ(state(), before);
}

TEST(DemoCommands, ChangeWhatTheyAreToldTo) {
    Session session;
    session.play({{"CWD /pub/latest", "250 *"},
                  {"PWD", "257 \"/archive/2021\" *"},
                  {"CWD /", "250 *"},
                  {"MKD a\"b", "257 \"/a\"\"b\" *"},
                  {"STAT -a", "*drwxr-xr-x   2 demo     staff * a\"b\r\n*"},
                  {"RNFR a\"b", "350 *"},
                  {"RNTO pub/newer", "250 *"},
                  {"RMD /pub/newer/", "250 *"},
                  {"SITE CHMOD 640 /pub/zero", "200 *"},
                  {"STAT /pub/zero", "*\r\n-rw-r----- *"},
                  {"site chattr +h \"pub\" \" -bob =staff\"", "200 *"},
                  {"site chattr +h \"pub\"", "200-CHATTR: -bob =staff\r\n200 *"},
                  {"CWD /music", "250 *"},
                  {"site nuke Album 1 3 bad tags",
                   "200-NUKE of Album 1: bad tags\r\n200- demo loses 39729 kB.\r\n200 *"},
                  {"CWD NUKED-Album 1", "250 *"},
                  {"SITE change bob speedlimit 11 12", "200 *"},
                  {"SITE chgrp bob staff friends", "200 *"},
                  {"SITE CorvelExt userfile 3", "*200-groupname | staff\r\n*"
                                                "200-limits | 11 | 12 | 2 | 3 | 0\r\n*"},
                  {"SITE gadduser music newbie secret a@b", "200 *"},
                  {"SITE CorvelExt usertable", "*\r\n200- | 61 | newbie | music | 3\r\n*"},
                  {"SITE grpren staff crew", "200 *"},
                  {"SITE renuser demo boss", "200 *"},
                  {"STAT /welcome.txt", "*1 boss     crew *"}});
}

// Walks every directory that demo may see: what the server lists, the browser of the program reads.
TEST(DemoCommands, ListTheWholeTreeInLinesThatCanBeRead) {
    Session session;
    std::vector<std::string> directories = {"/"};
    std::set<char> types;
    for (std::size_t i = 0; i < directories.size(); ++i) {
        const std::string reply = session.ask("STAT -a " + directories[i]);
        const std::vector<std::string_view> lines = split(reply, lineEnd);
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
}

} // namespace
} // namespace corvel

#include "app/BrowserActions.h"

#include "browser/Chattr.h"
#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvel::test {
namespace {

const std::string listing = "211-status of /pub:\r\n"
                            "drwxr-xr-x 2 root root 4096 Jan 5 12:00 ..\r\n"
                            "drwxr-xr-x 2 root root 4096 Jan 5 12:00 b dir\r\n"
                            "-rw-r--r-- 1 root root 17 Jan 5 12:00 a.txt\r\n"
                            "lrwxrwxrwx 1 root root 10 Jan 5 12:00 lnk -> /site/incoming/\r\n"
                            "drwxr-xr-x 2 root root 4096 Jan 5 12:00 bad\nname\r\n"
                            "211 End of Status\r\n";

// Rows as they are shown.
constexpr int parentRow = 0;
constexpr int directoryRow = 1;
constexpr int badNameRow = 2;
constexpr int linkRow = 3;
constexpr int fileRow = 4;

// Logged in, with the listing above on screen and "/pub" as the current directory.
struct Browsing : TestProgram {
    Browsing() : TestProgram(sitesFile(1)) {
        main.connectSite(1);
        play(*this, 1, loginScript("bob", "secret"), {}, "login");
        main.browser().refresh(1);
        answerListing();
    }

    void answerListing() {
        play(
            *this, 1,
            {expect("STAT -a"), send(listing), expect("PWD"), send("257 \"/pub\" is current directory.\r\n")},
            {}, "listing");
    }
};

TEST(BrowserActions, ListsADirectoryHoweverItsReplyIsCut) {
    const Script script = {expect("STAT -a"), send(listing), expect("PWD"),
                           send("257 \"/pub\" is current directory.\r\n")};
    for (const Cutting& cutting : everyCutting(script)) {
        TestProgram program(sitesFile(1));
        program.main.connectSite(1);
        play(program, 1, loginScript("bob", "secret"), {}, "login");
        program.main.browser().refresh(1);
        play(program, 1, script, cutting, "listing");
        const SiteSession& session = program.session(1);
        ASSERT_EQ(session.listingOrder.size(), 5U) << cutting.cutAt;
        EXPECT_EQ(program.main.browser().entryAt(1, fileRow)->name, "a.txt");
        EXPECT_EQ(session.listing.fileCount, 2U);
        EXPECT_EQ(session.listing.directoryCount, 2U);
        EXPECT_EQ(session.sCwd, "/pub");
        EXPECT_EQ(session.sBrowserPWD, "/pub");
    }
}

struct ActionCase {
    const char* name;
    void (*act)(BrowserActions&);
    std::vector<std::string> answers;
    std::vector<std::string> sent; // each answered with "250 ok"
    std::string asked;
    std::string cwd; // right after the action
};

TEST(BrowserActions, SendWhatTheyShould) {
    const std::vector<ActionCase> cases = {
        {"root", [](auto& b) { b.root(1); }, {}, {"CWD /"}, "", "/"},
        {"mkdir button", [](auto& b) { b.refreshAndNoop(1); }, {}, {"STAT -a", "NOOP"}, "", "/pub"},
        {"open a directory",
         [](auto& b) { b.open(1, directoryRow); },
         {},
         {"CWD /pub/b dir"},
         "",
         "/pub/b dir"},
        {"open the parent", [](auto& b) { b.open(1, parentRow); }, {}, {"CWD /"}, "", "/"},
        {"open a link",
         [](auto& b) { b.open(1, linkRow); },
         {},
         {"CWD /site/incoming"},
         "",
         "/site/incoming"},
        {"open a file", [](auto& b) { b.open(1, fileRow); }, {}, {}, "", "/pub"},
        {"open no row", [](auto& b) { b.open(1, 5); }, {}, {}, "", "/pub"},
        {"a name that cannot be sent leaves the directory",
         [](auto& b) { b.open(1, badNameRow); },
         {},
         {},
         "",
         "/pub"},
        {"delete a file",
         [](auto& b) { b.remove(1, fileRow); },
         {"yes"},
         {"DELE a.txt"},
         "Are u sure u want to delete this file:",
         "/pub"},
        {"delete a directory",
         [](auto& b) { b.remove(1, directoryRow); },
         {"yes"},
         {"RMD b dir"},
         "Are u sure u want to delete this directory:\r\nb dir",
         "/pub"},
        {"think better of it",
         [](auto& b) { b.remove(1, directoryRow); },
         {"no"},
         {},
         "Are u sure u want to delete this directory:\r\nb dir",
         "/pub"},
        {"delete a link", [](auto& b) { b.remove(1, linkRow); }, {}, {}, "", "/pub"},
        {"delete the parent", [](auto& b) { b.remove(1, parentRow); }, {}, {}, "", "/pub"},
        {"delete no row", [](auto& b) { b.remove(1, -1); }, {}, {}, "", "/pub"},
        {"make a directory",
         [](auto& b) { b.makeDirectory(1); },
         {"new dir"},
         {"MKD new dir"},
         "Please enter a name for the directory:",
         "/pub"},
        {"make a directory without a name",
         [](auto& b) { b.makeDirectory(1); },
         {""},
         {},
         "Please enter a name for the directory:",
         "/pub"},
        {"rename",
         [](auto& b) { b.rename(1, fileRow, "b.txt"); },
         {},
         {"RNFR a.txt", "RNTO b.txt"},
         "",
         "/pub"},
        {"rename to the same", [](auto& b) { b.rename(1, fileRow, "a.txt"); }, {}, {}, "", "/pub"},
        {"rename what cannot be sent", [](auto& b) { b.rename(1, badNameRow, "x"); }, {}, {}, "", "/pub"},
        {"rename to what cannot be sent", [](auto& b) { b.rename(1, fileRow, "x\ny"); }, {}, {}, "", "/pub"},
    };
    for (const ActionCase& row : cases) {
        Browsing program;
        program.prompts.answers.assign(row.answers.begin(), row.answers.end());
        row.act(program.main.browser());
        EXPECT_EQ(program.session(1).sCwd, row.cwd) << row.name;
        std::vector<std::string> sent = program.socket(1).takeSentLines();
        for (std::size_t i = 0; i < row.sent.size() && sent.size() < row.sent.size(); ++i) {
            program.main.wSock_DataArrival(1, "350 ok\r\n");
            for (const std::string& line : program.socket(1).takeSentLines()) {
                // The chain's own PWD has gone before a NOOP only by the ring's order; it is not the
                // action's.
                if (line != "PWD" && line != "STAT -a") {
                    sent.push_back(line);
                }
            }
        }
        EXPECT_EQ(sent, row.sent) << row.name;
        EXPECT_EQ(program.prompts.asked,
                  row.asked.empty() ? std::vector<std::string>() : std::vector<std::string>{row.asked})
            << row.name;
    }
}

TEST(BrowserActions, NavigationThatTheServerRefusesComesBack) {
    Browsing program;
    program.main.browser().open(1, directoryRow);
    play(program, 1,
         {expect("CWD /pub/b dir"), send("550 b dir: Permission denied\r\n"), expect("PWD"),
          send("257 \"/pub\" is the current directory\r\n")},
         {}, "refused");
    EXPECT_TRUE(program.session(1).listingOrder.empty());
    EXPECT_EQ(program.session(1).listing.directoryCount, 0U);
    EXPECT_EQ(program.session(1).sCwd, "/pub");
}

TEST(BrowserActions, ChainEndsWhereTheServerDoesNotPlayAlong) {
    const std::vector<std::pair<std::string, Script>> scripts = {
        {"PWD is not understood",
         {expect("STAT -a"), send("211-x\r\n211 end\r\n"), expect("PWD"), send("500 what?\r\n")}},
        {"STAT is not understood",
         {expect("STAT -a"), send("502 no\r\n"), expect("PWD"), send("257 \"/a\"\"b\" is yours\r\n")}},
    };
    for (const auto& [name, script] : scripts) {
        Browsing program;
        program.main.browser().refresh(1);
        play(program, 1, script, {}, name);
    }
}

TEST(BrowserActions, SortingOutlivesListings) {
    Browsing program;
    program.main.browser().sortBy(1, 0);
    EXPECT_EQ(program.main.browser().entryAt(1, 1)->name, "bad\nname");
    program.main.browser().refresh(1);
    program.answerListing();
    EXPECT_EQ(program.main.browser().entryAt(1, 1)->name, "bad\nname");
    EXPECT_EQ(program.main.browser().entryAt(1, 0)->name, "..");
}

TEST(BrowserActions, RepliesToFileCommandsGoToTheirOwnLog) {
    Browsing program;
    program.main.browser().rename(1, fileRow, "b.txt");
    play(program, 1,
         {expect("RNFR a.txt"), send("350 ready\r\n"), expect("RNTO b.txt"),
          send("250-renamed\r\n250 done\r\n")},
         {}, "rename");
    EXPECT_EQ(program.session(1).browserReplyLog.text(),
              "[12:34:56] > RNFR a.txt\r\n[12:34:56] 350 ready\r\n[12:34:56] > RNTO b.txt\r\n"
              "[12:34:56] 250-renamed\r\n[12:34:56] 250 done");
}

TEST(BrowserActions, AnswerAboutADirectoryIsKeptWithItsQuestion) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"200-CHATTR: -bob =staff\r\n200 done\r\n", "-bob =staff"},
        {"200-CHATTR: caf\xE9\r\n200 done\r\n", "caf\xE9"},
        {"550-no\r\n550 really not\r\n", "550-no"},
    };
    for (const auto& [reply, shown] : table) {
        const Script script = {expect("site chattr +h \"b dir\""), send(reply)};
        for (const Cutting& cutting : everyCutting(script)) {
            Browsing program;
            const std::string console = program.console(1);
            program.views.calls.clear();
            program.main.browser().send(1, {chattrQuery("b dir")});
            play(program, 1, script, cutting, reply);
            EXPECT_EQ(program.session(1).chattrAnswer.sQuery, "site chattr +h \"b dir\"");
            EXPECT_EQ(program.session(1).chattrAnswer.txtCurrent, shown);
            EXPECT_EQ(std::ranges::count(program.views.calls, "chattrAnswered 1"), 1);
            EXPECT_EQ(program.console(1), console);
        }
    }
}

} // namespace
} // namespace corvel::test

#include "app/BrowserActions.h"

#include "browser/BrowserCommands.h"
#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <functional>
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
struct Browsing : LoggedIn {
    Browsing() { refresh(); }

    BrowserActions& browser() { return main.browser(); }
    void refresh() {
        browser().refresh(1);
        answer(listingScript(listing), "listing");
    }
    // The whole of what was sent, each line but the last answered.
    void expectSent(const Texts& lines, const char* name) {
        Script script;
        for (const std::string& line : lines) {
            if (!script.empty()) {
                script.push_back(send("350 ok\r\n"));
            }
            script.push_back(expect(line));
        }
        answer(script, name);
    }
};

TEST(BrowserActions, OpenWalksWhereTheRowLeads) {
    struct Row {
        const char* name;
        int row;
        Texts sent;
        const char* cwd; // right after the action
    };
    const std::vector<Row> rows = {
        {"a directory", directoryRow, {"CWD /pub/b dir"}, "/pub/b dir"},
        {"a link", linkRow, {"CWD /site/incoming"}, "/site/incoming"},
        {"a file", fileRow, {}, "/pub"},
        {"no row", 5, {}, "/pub"},
        {"a name that cannot be sent leaves the directory", badNameRow, {}, "/pub"},
    };
    for (const Row& row : rows) {
        Browsing program;
        program.browser().open(1, row.row);
        EXPECT_EQ(program.session(1).sCwd, row.cwd) << row.name;
        program.expectSent(row.sent, row.name);
    }
}

TEST(BrowserActions, RemoveAsksBeforeItDeletes) {
    const std::string directory = "Are u sure u want to delete this directory:\r\nb dir";
    Browsing program;
    program.prompts.answers = {"no", "yes"};
    program.browser().remove(1, linkRow);
    program.browser().remove(1, parentRow);
    program.browser().remove(1, directoryRow);
    program.expectSent({}, "no answer, or no");
    program.browser().remove(1, directoryRow);
    program.expectSent({"RMD b dir"}, "a directory");
    EXPECT_EQ(program.prompts.asked, (Texts{directory, directory}));
}

TEST(BrowserActions, RemovesManyWithOneQuestion) {
    Browsing program;
    program.prompts.answers = {"yes"};
    program.prompts.beforeAnswer = [&] { EXPECT_EQ(program.session(1).asked, "Delete 2 entries in /pub?"); };
    program.browser().remove(1, {parentRow, linkRow});
    EXPECT_EQ(program.session(1).lastErrorLine, "Links and \"..\" are left alone");
    program.browser().remove(1, {parentRow, directoryRow, linkRow, fileRow});
    EXPECT_EQ(program.prompts.asked,
              Texts{"Are u sure u want to delete these 2 entries:\r\nb dir/\r\na.txt\r\n"
                    "\r\nLeft out: 1 link and \"..\""});
    EXPECT_EQ(program.session(1).asked, "");
    program.expectSent({"RMD b dir", "DELE a.txt"}, "one job");
    EXPECT_FALSE(program.session(1).browser.isChanged) << "nothing was accepted";
}

TEST(BrowserActions, ListsAgainAfterAChangeWhereTheSettingsWantIt) {
    LoggedIn program(1, "browser_refresh_after_change = 1\n");
    program.main.browser().refresh(1);
    program.answer(listingScript(listing), "listing");
    program.prompts.answers = {"yes"};
    program.main.browser().remove(1, fileRow);
    program.answer(Script{expect("DELE a.txt"), send("250 gone\r\n")} + listingScript(listing), "by itself");
    EXPECT_FALSE(program.session(1).browser.isChanged);
}

TEST(BrowserActions, UpSelectsWhereOneCameFrom) {
    Browsing program;
    program.browser().selectRow(1, fileRow);
    program.browser().goTo(1, "/pub/b dir/");
    program.answer({expect("CWD /pub/b dir"), send("250 CWD command successful\r\n"), expect("STAT -a"),
                    send("211-x\r\n211 end\r\n"), expect("PWD"),
                    send("257 \"/pub/b dir\" is current directory\r\n")},
                   "typed");
    EXPECT_EQ(program.session(1).browser.visits, 1U);
    program.browser().up(1);
    program.answer(
        Script{expect("CWD /pub"), send("250 CWD command successful\r\n")} + listingScript(listing), "up");
    EXPECT_EQ(program.session(1).browser.row, directoryRow);
    program.browser().goTo(1, "/nowhere");
    program.answer({expect("CWD /nowhere"), send("550 no\r\n"), expect("PWD"),
                    send("257 \"/pub\" is current directory\r\n")},
                   "refused");
    EXPECT_EQ(program.session(1).sBrowserPWD, "/pub");
    EXPECT_EQ(emptyReason(program.session(1).browser), "The server refused:\n550 no");
}

TEST(BrowserActions, RemembersThatAServerPadsItsListings) {
    Browsing program;
    program.browser().acceptPadding(1);
    program.answer(listingScript("211-x\r\n-rw-r--r-- 1 u g 1 Jan  5 12:34 f\r\n211 end\r\n"),
                   "listed again");
    EXPECT_EQ(program.browser().entryAt(1, 0)->name, "f");
    EXPECT_EQ(program.store.value("padded_listing_host1_21"), "1");
    EXPECT_TRUE(program.session(1).padsListings);
    program.store.setValue("padded_listing_host1_21", "");
    program.main.connectSite(1);
    EXPECT_FALSE(program.session(1).padsListings) << "it is asked for as a connection begins";
}

TEST(BrowserActions, RenameSendsBothNamesOrNone) {
    Browsing program;
    program.browser().rename(1, fileRow, "a.txt"); // the same name, and two that cannot be sent
    program.browser().rename(1, badNameRow, "x");
    program.browser().rename(1, fileRow, "x\ny");
    program.expectSent({}, "nothing");
    program.browser().rename(1, fileRow, "b.txt");
    program.expectSent({"RNFR a.txt", "RNTO b.txt"}, "another name");
    EXPECT_NE(program.session(1).browserReplyLog.text().find("> RNFR a.txt"), std::string::npos);
}

// Does to the rows what a person can do, and expects that nothing is asked, opened or sent, and why.
void expectUnusable(Browsing& program, const std::string& why, const std::string& name) {
    const std::size_t asked = program.prompts.asked.size();
    BrowserActions& browser = program.browser();
    browser.selectRow(1, directoryRow);
    for (const auto& act : std::vector<std::function<void()>>{
             [&] { browser.open(1, directoryRow); },
             [&] { browser.remove(1, fileRow); },
             [&] { browser.makeDirectory(1); },
             [&] { browser.rename(1, fileRow, "b.txt"); },
             [&] { program.main.menus().ExecuteMenuCommand(1, menuCommand("chmod", {})); },
             [&] { program.main.menus().ExecuteMenuCommand(1, menuCommand("chattr", {})); },
             [&] { program.main.menus().ExecuteMenuCommand(1, menuCommand("nuke", {})); },
         }) {
        program.views.calls.clear();
        act();
        EXPECT_EQ(program.views.calls, Texts{"lastErrorChanged 1"}) << name;
        EXPECT_NE(program.session(1).lastErrorLine.find(why), std::string::npos) << name;
    }
    EXPECT_NE(browser.sendIn(1, "/pub", {fileCommand("RMD ", "b dir")}), std::nullopt) << name;
    EXPECT_EQ(program.prompts.asked.size(), asked) << name;
}

TEST(BrowserActions, RowsAreOfOneDirectory) {
    const Script root = {expect("CWD /"), send("250 CWD command successful\r\n")};
    const Script rootListed = {expect("STAT -a"), send("211-x\r\n211 end\r\n"), expect("PWD"),
                               send("257 \"/\" is current directory\r\n")};
    {
        Browsing program;
        program.browser().root(1);
        expectUnusable(program, "on its way", "a navigation is queued");
        program.browser().refresh(1);
        program.answer(root + rootListed + listingScript(listing), "listed");
        EXPECT_TRUE(program.browser().isUsable(1));
    }
    {
        Browsing program;
        program.browser().send(1, {{.sCommand = "cwd /x", .iHandler = handler::menuFtp}});
        expectUnusable(program, "another directory", "the menu went elsewhere");
        program.answer({expect("cwd /x"), send("250 ok\r\n")}, "elsewhere");
        expectUnusable(program, "another directory", "the menu went elsewhere, answered");
        program.refresh();
        EXPECT_TRUE(program.browser().isUsable(1));
    }
    {
        Browsing program;
        program.prompts.answers = {"yes"};
        program.prompts.beforeAnswer = [&] { program.browser().root(1); };
        program.browser().remove(1, fileRow);
        program.answer(root + Script{expect("STAT -a")}, "nothing is deleted in another directory");
        program.answer({hangUp()}, "the connection ends");
        expectUnusable(program, "not connected", "the connection has ended");
        program.main.connectSite(1);
        program.answer({send("220 ready\r\n"), expect("USER bob")}, "connected again");
        expectUnusable(program, "connection ended", "no new list yet");
    }
}

TEST(BrowserActions, SortingOutlivesListings) {
    Browsing program;
    program.browser().selectRow(1, badNameRow);
    program.browser().sortBy(1, 0);
    program.refresh();
    EXPECT_EQ(program.browser().selectedEntry(1)->name, "bad\nname");
    EXPECT_EQ(program.browser().entryAt(1, 1)->name, "bad\nname");
}

} // namespace
} // namespace corvel::test

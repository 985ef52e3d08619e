#include "app/MenuActions.h"

#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel::test {
namespace {

// One name is Windows-1252, so all of the connection is.
const std::string listing = "211-status of /pub:\r\n"
                            "drwxr-xr-x 2 root staff 4096 Jan 5 12:00 ..\r\n"
                            "drwxr-xr-x 2 root staff 4096 Jan 5 12:00 gr\xF6\xDF\x65\r\n"
                            "lrwxrwxrwx 1 root staff 10 Jan 5 12:00 lnk -> /site/\r\n"
                            "-rw-r--r-- 1 bob staff 17 Jan 5 12:00 a & \"b\"; `c` | %(pwd) 100%\r\n"
                            "-rw-r--r-- 1 bob staff 17 Jan 5 12:00 two\nlines\r\n"
                            "211 End of Status\r\n";
const std::string menus = "menu_tray = x | %(name)\n"
                          "menu_browser = \xC3\xA4 %(name) | ftp site wipe %(name)\n"
                          "menu_userlist = x | %(name),%(user),%(uid),%(group)\n";

// Rows as they are shown.
constexpr int parentRow = 0;
constexpr int directoryRow = 1;
constexpr int linkRow = 2;
constexpr int fileRow = 3;
constexpr int badNameRow = 4;

// Logged in, with the listing above on screen.
struct Choosing : LoggedIn {
    Choosing() : LoggedIn(1, menus) {
        main.browser().refresh(1);
        answer(listingScript(listing), "listing");
        views.calls.clear();
    }

    // What the first entry of the browser's menu says for a row.
    MenuItem itemFor(int row) {
        main.browser().selectRow(1, row);
        return main.menus().ShowCustomMenu(1, MenuKind::browser).front();
    }
    std::string first(MenuKind kind, int site = 1) {
        return main.menus().ShowCustomMenu(site, kind).front().command;
    }
    Texts run(const std::string& line, int site = 1) { return run(menuCommand(line, {}), site); }
    Texts run(const MenuCommand& command, int site = 1) {
        main.menus().ExecuteMenuCommand(site, command);
        return socket(1).takeSentLines();
    }
};

TEST(MenuActions, MenusAreMadeForTheSelectedRow) {
    Choosing program;
    EXPECT_EQ(program.itemFor(-1).caption, "\xC3\xA4 ");
    EXPECT_EQ(program.itemFor(-1).command, "ftp site wipe ");
    EXPECT_EQ(program.itemFor(linkRow).command, "ftp site wipe lnk -> /site/");
    EXPECT_EQ(program.itemFor(directoryRow).caption, "\xC3\xA4 gr\xC3\xB6\xC3\x9F\x65");
    EXPECT_EQ(program.first(MenuKind::tray), "%(name)") << "it has no variables";
    EXPECT_EQ(program.first(MenuKind::browser, 0), "ftp site wipe ") << "no site";
    EXPECT_EQ(program.first(MenuKind::userList), ",,,") << "no user";
}

TEST(MenuActions, FtpSendsNamesInTheServersBytes) {
    Choosing program;
    EXPECT_EQ(program.run(program.itemFor(directoryRow).action), (Texts{"site wipe gr\xF6\xDF\x65"}));
    EXPECT_EQ(program.session(1).current.iHandler, handler::menuFtp);
    EXPECT_EQ(program.commandResults(1), "> site wipe gr\xC3\xB6\xC3\x9F\x65\r\n");
    program.answer({send("200 done\r\n")}, "done");
    EXPECT_EQ(program.run(program.itemFor(fileRow).action),
              (Texts{"site wipe a & \"b\"; `c` | %(pwd) 100%"}));
    program.answer({send("200 done\r\n")}, "done");
    EXPECT_EQ(program.run(program.itemFor(badNameRow).action), Texts()) << "a line break in the name";
    EXPECT_EQ(program.run("ftp site help", 0), Texts()) << "no site";
}

TEST(MenuActions, ChattrAsksForDirectoriesAndThenOpensItsDialog) {
    Choosing program;
    for (const int row : {-1, parentRow, linkRow, fileRow}) {
        program.main.browser().selectRow(1, row);
        EXPECT_EQ(program.run("chattr"), Texts()) << row;
        EXPECT_EQ(program.views.calls, Texts()) << row;
    }
    program.main.browser().selectRow(1, directoryRow);
    EXPECT_EQ(program.run("chattr"), (Texts{"site chattr +h \"gr\xF6\xDF\x65\""}));
    EXPECT_EQ(program.session(1).current.iHandler, handler::chattrQuery);
    EXPECT_TRUE(program.session(1).current.bQuiet);
    EXPECT_EQ(program.views.calls, (Texts{"dialogWanted 1 1"}));

    program.answer({send("200 ok\r\n")}, "asked");
    program.main.browser().refresh(1);
    program.answer(listingScript("drwxr-xr-x 2 root root 4096 Jan 5 12:00 a\"b\r\n211 end\r\n"), "a quote");
    program.main.browser().selectRow(1, 0);
    program.views.calls.clear();
    EXPECT_EQ(program.run("chattr"), Texts());
    EXPECT_EQ(program.views.calls, Texts());
    EXPECT_EQ(program.prompts.asked.size(), 1U) << "why it cannot be asked";
}

TEST(MenuActions, DoWhatTheirLinesSay) {
    struct Row {
        const char* line;
        int row;
        Texts done; // by the shell, else asked of the window
    };
    const std::vector<Row> rows = {
        {"format c:", fileRow, {}},
        {"exec \"my notes.txt\" more", -1, {"open my notes.txt"}},
        {"exit now", -1, {"quit"}},
        {"copy  a  b", -1, {"copy  a  b"}},
        {"kill  /Opt/My * ", -1, {"kill 7"}},
        {"kill /opt/other", -1, {}},
        {"chmod", fileRow, {"dialogWanted 1 0"}},
        {"nuke", fileRow, {"dialogWanted 1 2"}},
        {"chmod", -1, {}},
        {"copyuser", fileRow, {}},
    };
    for (const Row& row : rows) {
        Choosing program;
        program.shell.runningPath = "/opt/my *";
        program.main.browser().selectRow(1, row.row);
        EXPECT_EQ(program.run(row.line), Texts()) << row.line;
        EXPECT_EQ(program.shell.calls.empty() ? program.views.calls : program.shell.calls, row.done)
            << row.line;
        EXPECT_EQ(program.prompts.asked, Texts()) << row.line;
    }
    Choosing program;
    program.prompts.answers = {"no", "yes"};
    program.run("%copy a  b");
    EXPECT_EQ(program.shell.calls, Texts());
    program.run("%copy a  b");
    EXPECT_EQ(program.shell.calls, (Texts{"copy a  b"}));
    program.prompts.answers = {"no", "yes"};
    const MenuCommand chosen = menuCommand("exec %(v)", {{"v", "halt"}});
    program.run(chosen);
    EXPECT_EQ(program.shell.calls.size(), 1U);
    program.run(chosen);
    EXPECT_EQ(program.shell.calls.back(), "open halt");
    program.run(menuCommand("exec /x/%(v)", {{"v", "../y"}}));
    EXPECT_EQ(program.shell.calls.size(), 2U);
    EXPECT_EQ(program.prompts.asked.back(), "Not done, since it leaves its folder:\r\n/x/../y");
}

// A menu, or its question, may stand open while the browser goes elsewhere.
TEST(MenuActions, AnEntryForARowIsOfItsDirectoryAlone) {
    Choosing program;
    program.main.browser().selectRow(1, fileRow);
    const std::optional<std::string> directory = program.main.menus().directoryOf(1, MenuKind::browser);
    EXPECT_EQ(program.main.menus().directoryOf(1, MenuKind::userList), std::nullopt);
    program.prompts.answers = {"yes"};
    program.prompts.beforeAnswer = [&] { program.main.browser().root(1); };
    program.main.menus().ExecuteMenuCommand(1, menuCommand("%ftp site wipe x", {}), directory);
    program.main.menus().ExecuteMenuCommand(1, menuCommand("ftp site wipe x", {}), directory);
    EXPECT_EQ(program.socket(1).takeSentLines(), Texts{"CWD /"});
    EXPECT_TRUE(program.session(1).lastErrorLine.starts_with("Nothing was done: "));
}

} // namespace
} // namespace corvel::test

#include "net/CommandChannel.h"
#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

namespace corvel::test {
namespace {

TEST(CommandChannel, LogsInHoweverTheRepliesAreCut) {
    const Script script = loginScript();
    const std::string console =
        "wSock_Connect()\r\n"
        "220 ready\r\n> USER bob\r\n331 password please\r\n> PASS *****\r\n230 welcome\r\n";
    std::size_t bytes = 0;
    for (const Step& step : script) {
        bytes += step.kind == Step::Kind::send ? step.text.size() : 0;
    }
    for (std::size_t cutAt = 0; cutAt < bytes; ++cutAt) {
        TestProgram program(sitesFile(1));
        program.main.connectSite(1);
        EXPECT_EQ(program.socket(1).connectedTo, "host1:21");
        play(program, 1, script, "login", cutAt);
        EXPECT_TRUE(program.session(1).bLoggedIn);
        EXPECT_EQ(program.session(1).sBrowserPWD, "/");
        EXPECT_EQ(program.console(1), console) << "cut at " << cutAt;
    }
}

TEST(CommandChannel, LogsInAfreshWhereverTheConnectionBroke) {
    const Script whole = loginScript();
    for (std::size_t bytes = 1, left = 0; left == 0; ++bytes) {
        Script script;
        left = bytes;
        for (const Step& step : whole) {
            const bool isSent = step.kind == Step::Kind::send;
            if (isSent && left == 0) {
                break;
            }
            script.push_back(isSent ? send(step.text.substr(0, left)) : step);
            left -= isSent ? std::min(left, step.text.size()) : 0;
            if (isSent && script.back().text.size() < step.text.size()) {
                break;
            }
        }
        TestProgram program(sitesFile(1));
        program.main.connectSite(1);
        play(program, 1, script, "broken behind " + std::to_string(bytes));
        program.main.wSock_Error(1, "Connection reset by peer", 104);
        EXPECT_FALSE(program.session(1).bLoggedIn);
        program.main.connectSite(1);
        play(program, 1, whole, "afresh behind " + std::to_string(bytes));
        EXPECT_EQ(program.session(1).sBrowserPWD, "/");
    }
}

TEST(CommandChannel, GoesThroughUnusualLoginsToTheirEnd) {
    struct Row {
        const char* name;
        Script script;
        bool loggedIn;
        std::string console; // behind the first line
    };
    const std::string closed = "wSock_Close()\r\n----------- connection closed -----------\r\n";
    std::string everyByte(256, '\0');
    std::iota(everyByte.begin(), everyByte.end(), '\0');
    const std::vector<Row> cases = {
        {"refused password stays connected",
         {send("220-hi\r\n220 there\r\n"), expect("USER bob"), send("331 go on\r\n"), expect("PASS secret"),
          send("530 no\r\n")},
         false,
         "220-hi\r\n220 there\r\n> USER bob\r\n331 go on\r\n> PASS *****\r\n530 no\r\n"},
        {"no password wanted",
         {send("220 hi\r\n"), expect("USER bob"), send("230 in\r\n"), expect("SITE CorvelExt usertable")},
         true,
         "220 hi\r\n> USER bob\r\n230 in\r\n"},
        {"wants a password before any user name",
         {send("331 go on\r\n"), send("220 hi\r\n"), expect("USER bob")},
         false,
         "331 go on\r\n220 hi\r\n> USER bob\r\n"},
        {"hangs up in a reply",
         {send("220 hi\r\n"), expect("USER bob"), send("331 g"), hangUp()},
         false,
         "220 hi\r\n> USER bob\r\n" + closed},
        {"hangs up at once", {hangUp()}, false, closed},
        {"refuses the service",
         {send("421 \x1B[31mno\r\n"), hangUp()},
         false,
         "421 \u241B[31mno\r\n" + closed},
        {"sends every byte there is", {send(everyByte), hangUp()}, false, closed},
    };
    for (const Row& row : cases) {
        TestProgram program(sitesFile(1));
        program.main.connectSite(1);
        play(program, 1, row.script, row.name);
        EXPECT_EQ(program.session(1).bLoggedIn, row.loggedIn) << row.name;
        EXPECT_EQ(program.console(1), "wSock_Connect()\r\n" + row.console) << row.name;
    }
}

// The channel alone, with a site that is logged in.
struct Channel {
    Channel() {
        sites[1].wSock = std::make_unique<FakeSocket>();
        socket().current = SocketState::connected;
        sites[1].session.bLoggedIn = true;
    }

    FakeSocket& socket() { return static_cast<FakeSocket&>(*sites[1].wSock); }
    bool queue(const std::string& line) { return channel.SendCommand(1, {.sCommand = line}); }

    Sites sites = Sites(2);
    Settings settings;
    FixedClock clock;
    RecordingViews views;
    MemoryStore store;
    ConsoleLog log{sites, clock, views};
    CommandChannel channel{sites, log, views, settings, store, {}};
};

TEST(CommandChannel, RingTakes26AndSendsTheLatestBeforeTheWaiting) {
    Channel program;
    EXPECT_TRUE(program.queue("first"));
    for (int i = 1; i <= 27; ++i) {
        EXPECT_EQ(program.queue("waiting " + std::to_string(i)), i <= 26);
    }
    EXPECT_EQ(program.socket().takeSentLines(), Texts{"first"});

    // "waiting 1" took the slot that was just sent, where the sender looks first; a late command takes the
    // slot that "waiting 1" leaves and goes out before the others.
    program.channel.ReplyRouter(1, "200 ok\r\n");
    EXPECT_EQ(program.socket().takeSentLines(), Texts{"waiting 1"});
    EXPECT_TRUE(program.queue("late"));
    for (int i = 1; i <= 26; ++i) {
        program.channel.ReplyRouter(1, "200 ok\r\n");
        EXPECT_EQ(program.socket().takeSentLines(), Texts{i == 1 ? "late" : "waiting " + std::to_string(i)});
    }
    program.channel.ReplyRouter(1, "200 ok\r\n");
    EXPECT_TRUE(program.socket().takeSentLines().empty());
}

TEST(CommandChannel, NothingOfAConnectionGoesIntoTheNext) {
    Channel program;
    program.queue("first");
    program.queue("waiting");
    program.sites[1].session.sCwd = "/pub";
    program.channel.ResetSession(1);
    EXPECT_EQ(program.sites[1].session.sCwd, "/");
    EXPECT_EQ(program.socket().takeSentLines(), Texts{"first"});
    program.socket().current = SocketState::connected;
    program.queue("next");
    EXPECT_EQ(program.socket().takeSentLines(), Texts{"next"});
    program.channel.ReplyRouter(1, "200 ok\r\n");
    EXPECT_TRUE(program.socket().takeSentLines().empty());
}

TEST(CommandChannel, SendsAndEchoesWhatAPersonTypes) {
    const std::string notSent = "Command not sent: it holds a line break or a NUL character\r\n";
    struct Row {
        std::string command;
        bool isSent;
        std::string echoed;
    };
    const std::vector<Row> rows = {
        {"pass geheim", true, "> PASS *****\r\n"},
        {"NOOP\nDELE x", false, notSent},
        {std::string("NO\0OP", 5), false, notSent},
        {"a\x1B[2J", true, "> a\xE2\x90\x9B[2J\r\n"}, // shown, not obeyed
    };
    for (const Row& row : rows) {
        LoggedIn program;
        const std::size_t before = program.console(1).size();
        program.main.sendConsoleCommand(1, row.command);
        EXPECT_EQ(program.socket(1).takeSentLines(), row.isSent ? Texts{row.command} : Texts())
            << row.command;
        EXPECT_EQ(program.console(1).substr(before), row.echoed) << row.command;
    }
}

TEST(CommandChannel, ShowsWholeLinesOnlyAndNothingOfQuietCommands) {
    LoggedIn program;
    const std::size_t before = program.console(1).size();
    program.main.sendConsoleCommand(1, "stat");
    for (const char* const piece : {"211-ab\r", "\nc\nd\r\n21", "1 end\r\n"}) {
        program.main.wSock_DataArrival(1, piece);
    }
    program.main.tmrNoop_Timer(1);
    program.main.wSock_DataArrival(1, "200 noop\r\n");
    EXPECT_EQ(program.console(1).substr(before), "> stat\r\n211-ab\r\nc\u240Ad\r\n211 end\r\n");
}

TEST(CommandChannel, ReadsTextByTextAndWritesAsTheServerDoes) {
    LoggedIn program;
    program.main.sendConsoleCommand(1, "stat");
    program.main.wSock_DataArrival(1, "211-zw\xF6lf\r\n211 gr\xFC\xDF\r\n");
    EXPECT_EQ(program.session(1).encoding, TextEncoding::windows1252);
    program.main.sendConsoleCommand(1, "gr\xFC\xDF");
    program.main.wSock_DataArrival(1, "211-zw\xF6lf\r\n211 grüß\r\n");
    EXPECT_EQ(program.session(1).encoding, TextEncoding::utf8);
    EXPECT_NE(program.console(1).find("211-zwölf\r\n211 grüß\r\n> grüß\r\n211-zwölf\r\n211 grüß\r\n"),
              std::string::npos);
}

TEST(CommandChannel, TakesTheTelnetLayerOffAndPutsItOn) {
    LoggedIn program;
    program.main.browser().send(1, {{"DELE \xFF\xFE", true, handler::browserFile}});
    program.answer({expect("DELE \xFF\xFF\xFE"), send("\xFF\xFC\x01"
                                                      "550 \xFF\xFF\xFE: no\r\n")},
                   "refused");
    EXPECT_EQ(program.session(1).lastErrorLine, "550 \xFF\xFE: no");
    program.main.sendConsoleCommand(1, "next");
    program.answer({expect("next")}, "the channel goes on");
}

TEST(CommandChannel, ASiteThatFailsLeavesTheOtherAlone) {
    LoggedIn program(2);
    const auto greet = [&program] {
        program.main.connectSite(2);
        play(program, 2, {send("220 two\r\n"), expect("USER bob")}, "second site");
    };
    greet();
    EXPECT_TRUE(program.socket(1).takeSentLines().empty());
    EXPECT_EQ(program.console(1).find("220 two"), std::string::npos);
    program.main.wSock_DataArrival(2, "331-half a reply"); // which the next greeting does not end
    program.main.wSock_Error(2, "Connection reset", 1);
    EXPECT_EQ(program.console(2), "wSock_Connect()\r\n220 two\r\n> USER bob\r\n"
                                  "wSock_Error() -> Connection reset (1)\r\n"
                                  "----------- connection closed -----------\r\n");
    greet();
    program.main.wSock_DataArrival(2, std::string(70000, 'x'));
    EXPECT_EQ(program.socket(2).state(), SocketState::closed);
    EXPECT_NE(program.console(2).find("Reply line of more than 64 KiB, closing the connection"),
              std::string::npos);
    EXPECT_TRUE(program.session(1).bLoggedIn);
}

TEST(Connection, ChoosesWhereToConnect) {
    struct Row {
        const char* name;
        std::string site;
        std::string settings;
        std::string connectedTo;
        std::string userCommand;
    };
    const std::vector<Row> rows = {
        {"direct", "name=a\nhost=h\nport=2121\nuser=u\npass=p\n", "", "h:2121", "USER u"},
        {"through the proxy", "name=a\nhost=h\nport=2121\nuser=u\npass=p\nusesslproxy=1\n",
         "ssl_tunnel_host=127.0.0.1\nssl_tunnel_port=4000\n", "127.0.0.1:4000", "USER u@h:2121"},
        {"port above 16 bits is no other port", "name=a\nhost=h\nport=65557\n", "", "", ""},
        {"no port of the proxy", "name=a\nhost=h\nport=21\nusesslproxy=1\n", "ssl_tunnel_host=p\n", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TestProgram program(row.site, row.settings);
        program.main.connectSite(1);
        EXPECT_EQ(program.socket(1).connectedTo, row.connectedTo) << row.name;
        if (row.connectedTo.empty()) {
            EXPECT_NE(program.console(1).find("is no port (1 - 65535)"), std::string::npos);
            EXPECT_EQ(program.console(1).find("ssl_tunnel_port") != std::string::npos,
                      row.site.find("usesslproxy") != std::string::npos);
        } else {
            play(program, 1, {send("220 hi\r\n"), expect(row.userCommand)}, row.name);
        }
    }
}

TEST(Who, IsAskedOnlyByAnIdleLoginThatIsNotFrozen) {
    LoggedIn program;
    program.main.connectSite(1);
    program.socket(1).current = SocketState::connected;
    program.main.tmrRefreshWho_Timer(1, false);
    program.main.tmrNoop_Timer(1);
    EXPECT_TRUE(program.socket(1).takeSentLines().empty()) << "not logged in";
    program.logIn();
    program.main.tmrRefreshWho_Timer(1, true);
    EXPECT_TRUE(program.socket(1).takeSentLines().empty()) << "frozen";
    program.main.tmrRefreshWho_Timer(1, false);
    program.main.tmrRefreshWho_Timer(1, false);
    program.main.tmrNoop_Timer(1);
    EXPECT_EQ(program.socket(1).takeSentLines(), Texts{"SITE CorvelExt who"});
}

TEST(Who, FillsTheRowsUntilTheConnectionEnds) {
    const std::string record = "200-cid | bob | staff | 7 | ftp | bobby | 10.0.0.5 | host | 10.0.0.6 | "
                               "STOR Größe | 150 | /srv/pub | /pub | 12 | 345 | 2 | 1572864 | ";
    LoggedIn program;
    const SiteSession& session = program.session(1);
    const auto ask = [&](const std::string& reply) {
        program.main.tmrRefreshWho_Timer(1, false);
        program.answer({expect("SITE CorvelExt who"), send(reply)}, "who");
    };
    ask("200-who\r\n" + record + "33\r\n" + record + "9999999999\r\n200 ok\r\n");
    ASSERT_EQ(session.activityRows.rows.size(), 1U);
    EXPECT_EQ(session.activityRows.rows[0].text(ActivityCell::lastCommand), "STOR Größe");
    EXPECT_TRUE(program.told("activityChanged 1"));
    EXPECT_TRUE(
        program.console(1).ends_with("Reply to \"SITE CorvelExt who\": reply line 3: \"9999999999\" is no "
                                     "32-bit number, the line is left out\r\n"));
    ask("550-no\r\n550 Not you.\r\n");
    EXPECT_EQ(session.activityRows.problem, "550 Not you.");
    EXPECT_EQ(session.activityRows.rows[0].text(ActivityCell::user), "--");
    EXPECT_EQ(session.activity, ActivityCounters{});
    program.main.disconnectSite(1);
    EXPECT_TRUE(session.activityRows.rows.empty());
}

} // namespace
} // namespace corvel::test

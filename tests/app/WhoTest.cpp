#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel::test {
namespace {

const std::string record = "200-cid | bob | staff | 7 | ftp | bobby | 10.0.0.5 | host | 10.0.0.6 | "
                           "STOR Größe | 150 | /srv/pub | /pub | 12 | 345 | 2 | 1572864 | ";

struct Asking : LoggedIn {
    // Asks who is online, and answers.
    void ask(const std::string& reply) {
        main.tmrRefreshWho_Timer(1, false);
        answer({expect("SITE CorvelExt who"), send(reply)}, "who");
    }

    std::string cell(std::size_t row, ActivityCell cell) const {
        return std::string(session(1).activityRows.rows.at(row).text(cell));
    }
};

TEST(Who, IsAskedOnlyByAnIdleLoginThatIsNotFrozen) {
    LoggedIn program;
    program.main.connectSite(1);
    program.socket(1).current = SocketState::connected;
    program.main.tmrRefreshWho_Timer(1, false);
    EXPECT_TRUE(program.socket(1).takeSentLines().empty()) << "not logged in";
    program.logIn();
    program.main.tmrRefreshWho_Timer(1, true);
    EXPECT_TRUE(program.socket(1).takeSentLines().empty()) << "frozen";
    program.main.tmrRefreshWho_Timer(1, false);
    program.main.tmrRefreshWho_Timer(1, false);
    EXPECT_EQ(program.socket(1).takeSentLines(), Texts{"SITE CorvelExt who"});
    EXPECT_EQ(program.session(1).current, (Command{"SITE CorvelExt who", true, handler::who, 0}));
}

TEST(Who, FillsTheRowsUntilTheConnectionEnds) {
    Asking program;
    const std::string console = program.console(1);
    program.views.calls.clear();
    program.ask("200-who\r\n" + record + "33\r\n" + record + "x\r\n200 Command successful.\r\n");
    ASSERT_EQ(program.session(1).activityRows.rows.size(), 2U);
    EXPECT_EQ(program.cell(0, ActivityCell::lastCommand), "STOR Größe");
    EXPECT_EQ(program.cell(1, ActivityCell::speed), "0 kBps");
    EXPECT_EQ(program.session(1).activity, (ActivityCounters{.uploadSpeed = 33, .uploaders = 2}));
    EXPECT_EQ(program.views.calls, Texts{"activityChanged 1"});
    EXPECT_EQ(program.console(1), console);
    program.main.disconnectSite(1);
    EXPECT_TRUE(program.session(1).activityRows.rows.empty());
    EXPECT_EQ(program.session(1).activity, ActivityCounters{});
}

TEST(Who, SaysWhatWasWrongWithAReply) {
    Asking program;
    program.ask("200-who\r\n" + record + "33\r\n" + record + "9999999999\r\n200 ok\r\n");
    EXPECT_EQ(program.session(1).activityRows.rows.size(), 1U);
    EXPECT_TRUE(
        program.console(1).ends_with("Reply to \"SITE CorvelExt who\": reply line 3: \"9999999999\" is no "
                                     "32-bit number, the line is left out\r\n"));
    EXPECT_EQ(program.session(1).activityRows.problem, "");

    program.ask("550-no\r\n550 Not you.\r\n");
    EXPECT_EQ(program.session(1).activityRows.problem, "550 Not you.");
    EXPECT_EQ(program.cell(0, ActivityCell::user), "--");
    EXPECT_EQ(program.session(1).activity, ActivityCounters{});
}

TEST(Who, AskedByHandIsForTheConsoleAlone) {
    Asking program;
    program.main.sendConsoleCommand(1, "SITE CorvelExt who");
    program.main.wSock_DataArrival(1, "200-who\r\n" + record + "33\r\n200 ok\r\n");
    EXPECT_TRUE(program.session(1).activityRows.rows.empty());
    EXPECT_NE(program.console(1).find(record), std::string::npos);
}

} // namespace
} // namespace corvel::test

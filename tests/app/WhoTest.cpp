#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel::test {
namespace {

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

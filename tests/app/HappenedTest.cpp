#include "app/QueueRows.h"
#include "net/StatusTexts.h"
#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

// What a person is told of what has happened: in the status bar, below the editors, in the queue.

namespace corvel::test {
namespace {

const std::string ok = "200 ok\r\n";
const std::string bobsTable = "200- | 7 | bob | staff | 3\r\n200 end\r\n";

// With bob open in the editor, and his details known.
struct Editing : LoggedIn {
    explicit Editing(const std::string& settings = {}) : LoggedIn(1, settings) {
        main.admin().users().reload(1);
        answer({expect("SITE CorvelExt usertable"), send(bobsTable)}, "table");
        main.admin().users().open(1, 0);
        answer({expect("SITE CorvelExt userfile 7"), send(details)}, "details");
    }
    std::string error() const { return lastErrorText(main.site(1)); }
    std::string outcome() { return main.admin().users().editor(1).outcome; }
    std::string waiting(std::int64_t now) const { return waitingText(main.site(1), now, 0, main.settings()); }

    const std::string details = "200-flags 3\r\n200 end\r\n";
};

TEST(StatusTexts, SayWhoIsLoggedInOrWhyNot) {
    TestProgram program(sitesFile(1));
    program.main.connectSite(1);
    program.socket(1).current = SocketState::connected;
    const auto login = [&program] { return loginText(program.main.site(1)); };
    play(program, 1,
         {send("220 hi\r\n"), expect("USER bob"), send("331 x\r\n"), expect("PASS secret"),
          send("530 Login incorrect.\r\n")},
         "refused");
    EXPECT_EQ(login(), "not logged in: 530 Login incorrect.");
    EXPECT_EQ(lastErrorText(program.main.site(1)), "") << "said already";
    program.main.wSock_Error(1, "Connection reset", 104);
    EXPECT_EQ(login(), "");
    EXPECT_EQ(lastErrorText(program.main.site(1)), "12:34:56 Connection reset");
    LoggedIn other;
    EXPECT_EQ(loginText(other.main.site(1)), "logged in as bob");
}

TEST(StatusTexts, CountTheSilenceBehindACommand) {
    Editing program("mask_passwords = 1\n");
    program.main.sendConsoleCommand(1, "SITE change bob passwd secret");
    EXPECT_EQ(program.waiting(1999), "");
    EXPECT_EQ(program.waiting(5200), "waiting 5 s for SITE change bob passwd *****");
    program.clock.now = 4000;
    program.main.wSock_DataArrival(1, "200-");
    EXPECT_EQ(program.waiting(5200), "") << "it speaks";
    EXPECT_EQ(waitingText(program.main.site(1), 69000, 12, program.main.settings()),
              "waiting 1 min 5 s for SITE change bob passwd *****, 12 waiting");
    EXPECT_EQ(durationText(40), "0.0 s");
    EXPECT_EQ(durationText(1999), "1.9 s");
}

TEST(LastError, StaysUntilThePersonDoesSomething) {
    Editing program;
    program.main.browser().refresh(1);
    program.answer(
        {expect("STAT -a"), send("550 no\r\n"), expect("PWD"), send("257 \"/\" is current directory.\r\n")},
        "refused");
    EXPECT_EQ(program.error(), "12:34:56 550 no");
    program.main.tmrNoop_Timer(1);
    program.answer({expect("NOOP"), send(ok)}, "by itself");
    EXPECT_EQ(program.error(), "12:34:56 550 no");
    EXPECT_TRUE(program.main.sendTestCommand(1, "HELP"));
    program.answer({expect("HELP"), send(ok)}, "a round of the load test");
    EXPECT_EQ(program.error(), "12:34:56 550 no");
    program.main.sendConsoleCommand(1, "STAT");
    EXPECT_EQ(program.error(), "");
}

// The end of a job may start another: that is nothing that the person has done.
TEST(LastError, StaysWhenAJobStartsAnother) {
    Editing program;
    const auto next = [&program](const Receipt& /*receipt*/) {
        program.main.outbox().start(1, {{{.sCommand = "second"}}});
    };
    program.main.outbox().start(1, {{{.sCommand = "first"}}}, next);
    program.answer({expect("first"), send("550 no\r\n"), expect("second"), send(ok)}, "both");
    EXPECT_EQ(program.error(), "12:34:56 550 no");
}

TEST(LastError, MarksItsSiteUntilItIsLookedAt) {
    LoggedIn program(2);
    program.main.wSock_Error(2, "Connection refused", 111);
    EXPECT_TRUE(program.session(2).isErrorUnseen);
    program.main.selectSite(2);
    EXPECT_FALSE(program.session(2).isErrorUnseen);
}

TEST(Outcome, OfASaveStaysWithItsRecord) {
    Editing program;
    AccountTable<UserKind>& users = program.main.admin().users();
    const auto save = [&](const std::vector<std::pair<std::string, std::string>>& answers) {
        users.typed(1, 0, "new name");
        users.typed(1, 1, "4");
        users.save(1);
        Script script;
        for (const auto& [command, reply] : answers) {
            script.push_back(expect(command));
            script.push_back(send(reply));
        }
        program.answer(script + Script{expect("SITE CorvelExt userfile 7"), send(program.details)}, "save");
    };
    const std::string flags = "SITE CorvelExt setflags 7 4";
    const std::string rename = "SITE renuser bob new name";
    save({{flags, ok}, {rename, ok}});
    EXPECT_EQ(program.outcome(), "12:34:56 saved: 2 commands accepted");
    save({{flags, ok}, {rename, "550 taken\r\n"}});
    EXPECT_EQ(program.outcome(), "12:34:56 1 of 2 refused: 550 taken");
    users.typed(1, 0, std::string("new\0name", 8));
    users.save(1);
    program.answer({}, "nothing");
    EXPECT_EQ(program.outcome(), "12:34:56 Command not sent: it holds a line break or a NUL character");
    EXPECT_NE(users.editor(1).draft, nullptr) << "what is typed stays";
    users.typed(1, 0, "new name");
    users.save(1);
    program.main.disconnectSite(1);
    EXPECT_EQ(program.session(1).userView.outcome, "12:34:56 the connection ended after 0 of 2");
}

TEST(QueueRows, AreWhatRunsWhatWaitsAndWhatIsOver) {
    Editing program("mask_passwords = 1\n");
    program.main.outbox().start(
        1, {.commands = {{.sCommand = "RNFR a"}, {.sCommand = "SITE pswd x"}}, .title = "rename a"});
    program.clock.now = 1500;
    program.answer({expect("RNFR a"), send("350 go on\r\n"), expect("SITE pswd x")}, "half of it");
    program.main.sendConsoleCommand(1, "SITE passwd secret");
    const QueueRows rows(program.main.outbox().jobs(1), program.main.outbox().journal(1));
    Texts shown;
    for (int row = 0; row < 5; ++row) {
        std::string line;
        for (const auto column :
             {QueueColumn::what, QueueColumn::state, QueueColumn::time, QueueColumn::took}) {
            line += rows.text(row, column, program.main.settings()) + "|";
        }
        shown.push_back(line);
    }
    EXPECT_EQ(shown, Texts({"rename a, 2 commands|runs, 1 of 2|12:34:56||",
                            "    RNFR a|350 go on|12:34:56|1.5 s|", "    SITE pswd *****||||",
                            "SITE passwd *****|waits|||", "read bob|200 end|12:34:56|0.0 s|"}));
    EXPECT_EQ(rows.rowOf(rows.at(2).job->id), 0);
    EXPECT_EQ(rows.at(2).command, 1U);
    EXPECT_EQ(rows.at(rows.count()).job, nullptr);
}

} // namespace
} // namespace corvel::test

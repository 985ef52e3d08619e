#include "app/Outbox.h"

#include "admin/Batch.h"
#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel::test {
namespace {

const std::string ok = "200 ok\r\n";
const std::string batchBegin = "-------------[ BEGIN ]-[ BATCH COMMAND ]-------------\r\n";
const std::string batchEnd = "-------------[ END ]-[ BATCH COMMAND ]-------------\r\n";

// The lines in their order, each answered.
Script answered(const Texts& lines) {
    Script script;
    for (const std::string& line : lines) {
        script.push_back(expect(line));
        script.push_back(send(ok));
    }
    return script;
}

const std::string userTable = "200- | 7 | bob | staff | 3\r\n200- | 3 | alice | staff | 3\r\n200 end\r\n";
const std::string listing =
    "211-x\r\n-rw-r--r-- 1 r r 1 Jan 5 12:00 a\r\n-rw-r--r-- 1 r r 1 Jan 5 12:00 b\r\n"
    "211 end\r\n";

// Logged in, with two users in the table and the files a and b in the list.
struct Working : LoggedIn {
    Working() {
        main.admin().users().reload(1);
        main.browser().refresh(1);
        answer(Script{expect("SITE CorvelExt usertable"), send(userTable)} + listingScript(listing), "start");
    }

    void type(const std::string& line) { main.sendConsoleCommand(1, line); }
    // Lines that wait behind one that is not answered yet.
    Texts fill(int count) {
        Texts lines;
        for (int i = 0; i < count; ++i) {
            lines.push_back("line " + std::to_string(i));
            type(lines.back());
        }
        return lines;
    }
    std::string result() const { return commandResults(1); }
};

CommandSequence taglines(const std::vector<std::string_view>& names = {"bob", "alice"}) {
    return batchSequence({.chkBatchTagLine = true, .txtBatchTagline = "hi"}, names).value();
}

CommandSequence adding(const std::string& name, std::int32_t code = handler::addUser) {
    return {"begin " + name,
            LogKind::console,
            "site change " + name + " flags 3\r\n",
            {"SITE gadduser " + name, false, code, -1}};
}

TEST(Outbox, TakesWhatThirtyFullRingsCouldNot) {
    Working program;
    Texts lines = program.fill(40);
    EXPECT_FALSE(program.main.admin().startSequence(1, adding("eve")));
    EXPECT_FALSE(program.main.admin().startSequence(1, adding("crew", handler::addGroup)));
    program.main.admin().startBatch(1, taglines());
    lines.insert(lines.end(), {"SITE gadduser eve", "site change eve flags 3", "SITE gadduser crew",
                               "site change crew flags 3", "SITE CorvelExt grouptable", "NOOP",
                               "site change bob tagline hi", "site change alice tagline hi"});
    program.answer(answered(lines), "all of them");
    EXPECT_EQ(program.result(), "> SITE gadduser eve\r\n200 ok\r\n> site change eve flags 3\r\n200 ok\r\n"
                                "-------------[ END ]-[ ADDUSER ]-------------\r\n"
                                "> SITE gadduser crew\r\n200 ok\r\n> site change crew flags 3\r\n200 ok\r\n"
                                "-------------[ END ]-[ ADDGROUP ]-------------\r\n" +
                                    batchBegin + "200 ok\r\n200 ok\r\n200 ok\r\n" + batchEnd);
    EXPECT_NE(program.console(1).find("> line 39\r\n200 ok\r\nbegin eve\r\n200 ok\r\n"), std::string::npos);
}

TEST(Outbox, KeepsTheCommandsOfAJobTogether) {
    Working program;
    std::vector<Command> changes;
    Texts lines = {"first"};
    for (int i = 0; i < 40; ++i) {
        lines.push_back("SITE change bob admingroup g" + std::to_string(i));
        changes.push_back({lines.back(), false, handler::userChange});
    }
    lines.insert(lines.end(), {"SITE CorvelExt userfile 7", "RNFR a", "RNTO A", "STAT -a", "PWD", "RNFR b",
                               "RNTO B", "CWD /", "PWD"});
    program.type("first");
    program.main.admin().users().change(1, 7, changes, "save ");
    program.main.browser().rename(1, 0, "A");
    program.main.browser().refresh(1);
    program.main.browser().rename(1, 1, "B");
    program.main.browser().root(1);
    for (const std::string& line : lines) {
        program.main.tmrNoop_Timer(1); // the timers have no turn while anything waits
        program.main.tmrRefreshWho_Timer(1, false);
        program.answer({expect(line)}, line);
        program.main.wSock_DataArrival(1, ok);
    }
}

TEST(Outbox, LetsOneJobInBetweenTwoLinesOfABatch) {
    Working program;
    program.main.admin().startBatch(1, taglines({"a", "b", "c"}));
    EXPECT_EQ(program.main.admin().batchProgress(1), "0 of 3");
    program.main.admin().startBatch(1, taglines());
    program.main.browser().rename(1, 0, "A");
    program.main.browser().rename(1, 1, "B");
    program.answer(answered({"NOOP"}) + Script{expect("RNFR a"), send(ok), expect("RNTO A")}, "a guest");
    EXPECT_EQ(program.main.admin().batchProgress(1), "0 of 3");
    program.answer({send(ok), expect("site change a tagline hi")}, "a line");
    EXPECT_EQ(program.main.admin().batchProgress(1), "1 of 3");
    program.answer(Script{send(ok)} +
                       answered({"RNFR b", "RNTO B", "site change b tagline hi", "site change c tagline hi",
                                 "NOOP", "site change bob tagline hi", "site change alice tagline hi"}),
                   "the rest, and the next batch");
    EXPECT_EQ(program.main.admin().batchProgress(1), "");
    EXPECT_EQ(program.result(), batchBegin + "200 ok\r\n200 ok\r\n200 ok\r\n200 ok\r\n" + batchEnd +
                                    batchBegin + "200 ok\r\n200 ok\r\n200 ok\r\n" + batchEnd);
}

TEST(Outbox, ChecksWholeJobsBeforeAnyOfThemGoesOut) {
    const std::string twoLines = "Command not sent: it holds a line break or a NUL character";
    const std::string closed = "Command not sent: the site is not connected";
    Working program;
    AdminActions& admin = program.main.admin();
    CommandSequence bad = taglines();
    bad.sBatchLines += "site change eve tagline a\nb\r\n";
    EXPECT_EQ(admin.startSequence(1, bad), twoLines);
    program.main.browser().rename(1, 0, std::string("A\0", 2));
    EXPECT_EQ(program.session(1).browserReplyLog.text(), "[12:34:56] " + twoLines);
    EXPECT_EQ(program.session(1).lastErrorLine, twoLines);
    EXPECT_FALSE(program.main.browser().send(1, {{""}})) << "nothing to do is done";
    // Of an account that has gone meanwhile the person is told.
    EXPECT_FALSE(admin.changeUserGroups(1, 8, {}) || admin.changeSections(1, 8, {}) ||
                 admin.copyUser(1, {"eve", "8", "rob"}));
    EXPECT_EQ(program.prompts.asked, Texts(3, "The user is not in the table any more. Nothing was sent."));
    admin.startBatch(1,
                     batchSequence({.chkBatchTagLine = true, .txtBatchTagline = "a\nb"}, {{"bob"}}).value());
    program.answer({}, "nothing went out");
    ASSERT_FALSE(program.main.outbox().journal(1).batches.empty());
    const JobHandle batch = program.main.outbox().journal(1).batches.back();
    EXPECT_EQ(batch->receipt.end, Receipt::End::unsendable);
    EXPECT_EQ(captionOf(*batch), "12:34:56 batch over 1 user");
    EXPECT_EQ(answerText(*batch, 0), "not sent: a line break or a NUL character is in it");

    program.main.disconnectSite(1);
    EXPECT_EQ(admin.startSequence(1, adding("eve")), closed);
    EXPECT_EQ(admin.changeUserGroups(1, 7, {}), closed);
    EXPECT_EQ(admin.changeSections(1, 7, {}), closed);
    EXPECT_EQ(admin.copyUser(1, {"bob", "7", "rob"}), closed);
    EXPECT_EQ(program.main.browser().send(1, {{"SITE chmod 644 a"}}), closed);
    admin.startBatch(1, taglines());
    EXPECT_EQ(program.result(), twoLines + "\r\n" + closed + "\r\n");
}

TEST(Outbox, SaysWhatAConnectionTookWithIt) {
    const std::vector<std::pair<int, std::string>> cases = {
        // answers to NOOP and the lines of the batch
        {0, "3 commands were not sent: the connection ended, 0 of 3 lines of the batch are done\r\n"},
        {2, "4 commands were not sent: the connection ended, 1 of 3 lines of the batch are done\r\n"},
        {3, "The connection ended, 2 of 3 lines of the batch are done\r\n"},
        {4, ""},
    };
    for (const auto& [answers, said] : cases) {
        Working program;
        program.main.admin().startBatch(1, taglines({"a", "b", "c"}));
        for (int i = 0; i < answers; ++i) {
            program.main.wSock_DataArrival(1, ok);
        }
        if (answers == 2) {
            program.main.browser().rename(1, 0, "A");
            program.main.admin().users().open(1, 0); // which nobody misses
            program.type("x");
        }
        program.socket(1).takeSentLines();
        const std::string before = program.result();
        program.answer({hangUp()}, said);
        EXPECT_EQ(program.result().substr(before.size()), said) << answers;
        program.logIn();
        EXPECT_EQ(program.main.admin().batchProgress(1), "");
    }
}

// Each command of a job as "account command: code reply (milliseconds)".
Texts recordOf(const JobRecord& job) {
    Texts lines;
    for (std::size_t i = 0; i < job.commands.size(); ++i) {
        const CommandRecord& command = job.commands[i];
        lines.push_back(std::string(job.accountOf(i)).append(" ").append(command.command).append(": ") +
                        (command.code == 0 ? "none" : *command.reply) + " (" +
                        std::to_string(command.milliseconds) + ")");
    }
    return lines;
}

TEST(Outbox, KeepsWhatBecameOfEachCommand) {
    Working program;
    Outbox& outbox = program.main.outbox();
    program.main.admin().startBatch(
        1, batchSequence({.chkBatchFlags = true, .chkBatchTagLine = true, .txtBatchFlags = "3"},
                         std::vector<std::string_view>{"NOOP", "bob"})
               .value());
    program.main.browser().rename(1, 0, "A");
    program.type("pass secret");
    const JobHandle batch = outbox.jobs(1).at(0);
    EXPECT_EQ(outbox.jobs(1).at(1)->title, "rename a");
    EXPECT_EQ(outbox.jobs(1).at(2)->title, "PASS *****");
    const auto reply = [&](const std::string& text) {
        program.clock.now += 40;
        program.main.wSock_DataArrival(1, text);
    };
    reply(ok); // to NOOP
    reply("350 go on\r\n");
    reply("553-no\r\n553 " + std::string(398, 'x') + "\u00E4 cut\r\n");
    reply(ok);
    EXPECT_EQ(recordOf(*batch),
              Texts({"NOOP site change NOOP flags 3: 200 ok (40)", "NOOP site change NOOP tagline : none (0)",
                     "bob site change bob flags 3: none (0)", "bob site change bob tagline : none (0)"}));
    EXPECT_EQ(batch->state, JobRecord::State::running);
    const JobRecord& renaming = *outbox.journal(1).others.back();
    EXPECT_EQ(*renaming.commands[1].reply, "553 " + std::string(396, 'x'));
    EXPECT_EQ(renaming.receipt.refusedCommand, "RNTO A");
    program.socket(1).takeSentLines();
    program.answer({send(ok), expect("site change NOOP tagline "), send("550 no\r\n"),
                    expect("site change bob flags 3"), send(ok), expect("site change bob tagline "),
                    send(ok)},
                   "the rest");
    EXPECT_EQ(outbox.journal(1).batches.back(), batch);
    EXPECT_EQ(batch->title + " at " + batch->begun, "batch over 2 users at 12:34:56");
    EXPECT_EQ(batch->answers(), 4U);
    EXPECT_EQ(batch->refusals(), 1U);
    for (int i = 0; i < 30; ++i) {
        program.type("x");
        reply(ok);
    }
    EXPECT_EQ(outbox.journal(1).history.size(), Journal::historyKept);
}

TEST(Outbox, TakesBackWhatWaits) {
    Working program;
    Outbox& outbox = program.main.outbox();
    program.main.admin().startBatch(1, taglines({"a", "b", "c"}));
    const JobHandle batch = outbox.jobs(1).front();
    program.main.admin().users().open(1, 0);
    program.main.browser().rename(1, 0, "A");
    program.main.browser().root(1);
    program.type("x");
    program.type("y");
    EXPECT_FALSE(outbox.cancel(1, batch->id)) << "it runs";
    EXPECT_TRUE(outbox.cancel(1, outbox.jobs(1).at(2)->id));
    EXPECT_EQ(outbox.cancelWaiting(1), 4U);
    EXPECT_EQ(outbox.cancelWaiting(1), 0U);
    EXPECT_EQ(program.session(1).sCwd, "/pub") << "where the server is";
    EXPECT_EQ(program.session(1).userView.detailsProblem, "cancelled");
    program.answer(answered({"NOOP", "site change a tagline hi"}) +
                       Script{expect("site change b tagline hi")},
                   "the batch goes on");
    program.type("z");
    EXPECT_TRUE(outbox.stopBatch(1));
    program.answer({send(ok), expect("z"), send(ok), expect("SITE CorvelExt userfile 7")}, "stopped");
    EXPECT_FALSE(outbox.stopBatch(1));
    EXPECT_EQ(program.result(), batchBegin + "cancelled: rename a, 2 commands were not sent\r\n" +
                                    "cancelled: 4 jobs, 4 commands were not sent\r\n" +
                                    "200 ok\r\n200 ok\r\n200 ok\r\nstopped after 2 of 3\r\n" + batchEnd);
    EXPECT_EQ(batch->receipt.end, Receipt::End::cancelled);
    EXPECT_EQ(batch->receipt.sent, 3U) << "the NOOP and two lines";
}

// A view that wants something sent while a reply is being dealt with does not get between the reply and what
// its handler asks for.
TEST(Outbox, NothingGoesOutFromInsideAReply) {
    Working program;
    program.views.whenTold = [&program](const std::string& call) {
        if (call == "listingChanged 1") {
            program.type("from inside");
        }
    };
    program.main.browser().refresh(1);
    program.answer(listingScript(listing) + Script{expect("from inside")}, "refresh");
}

TEST(Outbox, NothingPushesItselfIntoTheLogin) {
    const Script tables = {expect("SITE CorvelExt usertable"),
                           send(ok),
                           expect("SITE CorvelExt grouptable"),
                           send(ok),
                           expect("CWD /"),
                           send("550 no\r\n"),
                           expect("PWD"),
                           send(ok)};
    TestProgram program(sitesFile(1));
    program.main.connectSite(1);
    play(program, 1, {}, "connected");
    program.main.sendConsoleCommand(1, "before the greeting");
    program.main.browser().refresh(1);
    play(program, 1, {send("220 hi\r\n"), expect("USER bob")}, "greeting");
    program.main.sendConsoleCommand(1, "between");
    program.main.sendConsoleCommand(1, "");
    play(program, 1,
         Script{send("331 go on\r\n"), expect("PASS secret"), send("230 in\r\n")} + tables +
             answered({"before the greeting"}) + listingScript("211 x\r\n") + answered({"between"}),
         "login");
}

} // namespace
} // namespace corvel::test

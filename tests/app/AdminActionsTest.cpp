#include "app/AdminActions.h"

#include "admin/AddUser.h"
#include "admin/Batch.h"
#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel::test {
namespace {

const std::string userTable = "200-usertable\r\n"
                              "200- | 7 | bob | staff | 3\r\n"
                              "200- | 3 | alice | staff | 3M\r\n"
                              "200- | 99999 | huge | staff | 3\r\n"
                              "200- | 12 | g\xC3\xBCnter | guests | \r\n"
                              "200- | 99998 | huger | staff | 3\r\n"
                              "200 end\r\n";
const std::string groupTable = "200- | 1 | staff | 2\r\n200- | 2 | guests | 1\r\n200 end\r\n";
const std::string bobFile = "200-username | bob\r\n"
                            "200-groupname | staff\r\n"
                            "200-flags | 3\r\n"
                            "200-tagline | hello\r\n"
                            "200-limits | 100 | 200 | 1 | 2 | 3\r\n"
                            "200-groups | 1\r\n"
                            "200 end\r\n";
const std::string aliceFile =
    "200-username | alice\r\n200-groupname | staff\r\n200-flags | 3M\r\n200 end\r\n";
const std::string staffFile = "200-groupname | staff\r\n200-description | people\r\n200 end\r\n";

const std::string getUsers = "SITE CorvelExt usertable";
const std::string getGroups = "SITE CorvelExt grouptable";
const std::string getBob = "SITE CorvelExt userfile 7";
const std::string getAlice = "SITE CorvelExt userfile 3";
const std::string ok = "200 ok\r\n";

// Rows as they are shown, and the places in the table.
constexpr int bobRow = 0;
constexpr int aliceRow = 1;
constexpr int noRow = 3;

// Logged in, with the two tables read.
struct Administering : TestProgram {
    Administering() : TestProgram(sitesFile(1)) {
        main.connectSite(1);
        play(*this, 1, loginScript("bob", "secret"), {}, "login");
        main.admin().reloadUsers(1);
        main.admin().reloadGroups(1);
        play(*this, 1, {expect(getUsers), send(userTable), expect(getGroups), send(groupTable)}, {},
             "tables");
        views.calls.clear();
    }

    AdminActions& admin() { return main.admin(); }
    void answer(const Script& script, const std::string& name) { play(*this, 1, script, {}, name); }
    void openBob() {
        admin().openUser(1, bobRow);
        answer({expect(getBob), send(bobFile)}, "open bob");
    }
    UserForm bobsForm() const { return InfoToForm(session(1).Users[0], session(1).Groups); }
    bool told(const std::string& call) const {
        return std::find(views.calls.begin(), views.calls.end(), call) != views.calls.end();
    }
};

TEST(AdminActions, TablesComeOutTheSameHoweverTheirRepliesAreCut) {
    const Script script = {expect(getUsers), send(userTable), expect(getGroups), send(groupTable)};
    for (const Cutting& cutting : everyCutting(script)) {
        TestProgram program(sitesFile(1));
        program.main.connectSite(1);
        play(program, 1, loginScript("bob", "secret"), {}, "login");
        program.main.admin().reloadUsers(1);
        program.main.admin().reloadGroups(1);
        play(program, 1, script, cutting, "tables");
        const SiteSession& session = program.session(1);
        ASSERT_EQ(session.Users.size(), 3U) << cutting.cutAt;
        EXPECT_EQ(session.Users[2].sName, "g\xC3\xBCnter");
        EXPECT_EQ(session.userView.rows, (std::vector<std::size_t>{0, 1, 2}));
        EXPECT_EQ(session.Groups.size(), 2U);
        EXPECT_EQ(session.Groups[1].my_index, 1);
        EXPECT_NE(program.console(1).find("Reply to \"SITE CorvelExt usertable\": reply line 4: "),
                  std::string::npos);
        EXPECT_NE(program.console(1).find("99999"), std::string::npos);
        EXPECT_EQ(program.console(1).find("99998"), std::string::npos) << "one line names the first alone";
    }
}

TEST(AdminActions, RefusedTableIsEmptyAndSaysWhy) {
    Administering program;
    program.openBob();
    program.admin().reloadUsers(1);
    program.answer({expect(getUsers), send("500-What\r\n500 Unknown command.\r\n")}, "refused");
    EXPECT_EQ(program.session(1).Users.size(), 1U);
    EXPECT_TRUE(program.session(1).userView.rows.empty());
    EXPECT_EQ(program.session(1).userView.problem, "500 Unknown command.");
    EXPECT_EQ(program.admin().currentUser(1), -1);
    program.admin().reloadUsers(1);
    program.answer({expect(getUsers), send(userTable)}, "taken");
    EXPECT_EQ(program.session(1).userView.problem, "");
}

TEST(AdminActions, DetailsAreFetchedOnceAndShown) {
    Administering program;
    program.openBob();
    EXPECT_EQ(program.session(1).Users[0].sTagline, "hello");
    EXPECT_EQ(program.views.calls, std::vector<std::string>{"userShown 1 0"});
    program.admin().openUser(1, bobRow);
    program.answer({}, "known");
    EXPECT_EQ(program.views.calls, (std::vector<std::string>{"userShown 1 0", "userShown 1 0"}));
    program.admin().openGroup(1, 0);
    program.answer({expect("SITE CorvelExt groupfile 1"), send(staffFile)}, "group");
    EXPECT_EQ(program.session(1).Groups[0].sDescription, "people");
    EXPECT_TRUE(program.told("groupShown 1 0"));

    program.admin().reloadUserfile(1);
    program.admin().reloadGroupfile(1);
    program.answer({expect(getBob), send(bobFile), expect("SITE CorvelExt groupfile 1"), send(staffFile)},
                   "again");
    program.admin().reloadUsers(1);
    program.answer({expect(getUsers), send(userTable)}, "table");
    EXPECT_EQ(program.admin().currentUser(1), 0) << "a reload keeps the current account";
    program.admin().openUser(1, bobRow);
    program.answer({expect(getBob), send(bobFile)}, "forgotten");
}

struct BadReplyCase {
    const char* name;
    std::string reply;
    std::string console; // what it says behind the reply's command
    bool isKnown;
};

TEST(AdminActions, BadDetailsHarmNothing) {
    const std::vector<BadReplyCase> cases = {
        {"refused", "550 no such user\r\n", "", false},
        {"another kind of answer", "331 what?\r\n", "", false},
        {"a number out of range", "200-tagline | new\r\n200-groups | 1 | 40000\r\n200 end\r\n",
         "reply line 2: ", false},
        {"a key without its value", "200-tagline | new\r\n200-flags\r\n200 end\r\n", "reply line 2: ", false},
        {"nothing known in it", "200 fine\r\n", "", true},
    };
    for (const BadReplyCase& row : cases) {
        Administering program;
        program.admin().openUser(1, bobRow);
        program.admin().reloadGroups(1);
        program.answer({expect(getBob), send(row.reply), expect(getGroups), send(groupTable)}, row.name);
        const clsUser& bob = program.session(1).Users[0];
        EXPECT_EQ(bob.got_info, row.isKnown) << row.name;
        EXPECT_EQ(program.told("userShown 1 0"), row.isKnown) << row.name;
        EXPECT_EQ(bob.sTagline, row.console.empty() ? "" : "new") << row.name;
        EXPECT_EQ(bob.sName, "bob") << row.name;
        const bool isRefused = row.console.empty() && !row.isKnown;
        EXPECT_EQ(program.session(1).lastErrorLine + "\r\n" == row.reply, isRefused) << row.name;
        const std::string line = "Reply to \"" + getBob + "\": " + row.console;
        EXPECT_EQ(program.console(1).find(line) != std::string::npos, !row.console.empty()) << row.name;
    }
}

TEST(AdminActions, DetailsOfAnAccountThatIsGoneAreReported) {
    const std::vector<std::pair<const char*, std::string>> tables = {
        {"an empty table", "200 end\r\n"},
        {"a shorter table", "200- | 9 | carol | staff | 3\r\n200 end\r\n"},
        {"another account in its place",
         "200- | 9 | carol | staff | 3\r\n200- | 8 | dave | staff | 3\r\n200 end\r\n"},
    };
    for (const auto& [name, table] : tables) {
        Administering program;
        program.admin().reloadUsers(1);
        program.admin().openUser(1, aliceRow); // its place is taken from the table as it is now
        program.answer({expect(getUsers), send(table), expect(getAlice), send(aliceFile)}, name);
        for (const clsUser& user : program.session(1).Users) {
            EXPECT_FALSE(user.got_info) << name;
            EXPECT_NE(user.sName, "alice") << name;
        }
        EXPECT_FALSE(program.told("userShown 1 1")) << name;
        EXPECT_NE(program.console(1).find("Reply to \"" + getAlice + "\": the user is not in the table"),
                  std::string::npos)
            << name;
    }
}

TEST(AdminActions, DetailsOfAnAccountThatHasMovedAreStillItsOwn) {
    Administering program;
    program.admin().reloadUsers(1);
    program.admin().openUser(1, aliceRow);
    program.answer({expect(getUsers), send("200- | 3 | alice | staff | 3\r\n" + userTable), expect(getAlice),
                    send(aliceFile)},
                   "moved");
    EXPECT_TRUE(program.session(1).Users[0].got_info);
    EXPECT_FALSE(program.session(1).Users[1].got_info) << "bob is in alice's place now";
    EXPECT_TRUE(program.told("userShown 1 0"));
}

struct EditCase {
    const char* name;
    void (*act)(Administering&);
    std::vector<std::string> answers;
    std::vector<std::string> sent;
    std::string asked;
};

// Every action on the editor of bob.
std::vector<EditCase> editCases() {
    return {
        {"nothing changed", [](auto& p) { p.admin().saveUser(1, p.bobsForm()); }, {}, {getBob}, ""},
        {"a tagline and a login",
         [](auto& p) {
             UserForm form = p.bobsForm();
             form.txtUserTagLine = "hello ";
             form.txtUserLogins[0] = "5";
             p.admin().saveUser(1, form);
         },
         {},
         {"SITE change bob tagline hello ", "SITE change bob logins 5 ftp", getBob},
         ""},
        {"flags of a master, thought better of",
         [](auto& p) {
             UserForm form = p.bobsForm();
             form.txtUserFlags = "3M";
             form.txtUserTagLine = "boss";
             p.admin().saveUser(1, form);
         },
         {"no"},
         {"SITE change bob tagline boss", getBob},
         "You are giving this user the Master flag (M). Are u sure u want to continue?"},
        {"flags of a master",
         [](auto& p) {
             UserForm form = p.bobsForm();
             form.txtUserFlags = "3M";
             p.admin().saveUser(1, form);
         },
         {"yes"},
         {"SITE CorvelExt setflags 7 3M", getBob},
         "You are giving this user the Master flag (M). Are u sure u want to continue?"},
        {"add a mask",
         [](auto& p) {
             UserForm form = p.bobsForm();
             form.txtUserIP = "*@10.1.*";
             p.admin().addMask(1, form);
         },
         {},
         {"SITE addip bob *@10.1.*", getBob},
         ""},
        {"delete a mask",
         [](auto& p) { p.admin().deleteMask(1, p.bobsForm()); },
         {},
         {"SITE delip bob *@*", getBob},
         ""},
        {"a password for the name in the box",
         [](auto& p) {
             UserForm form = p.bobsForm();
             form.txtUserName = "typed";
             p.admin().resetPassword(1, form);
         },
         {"new pass"},
         {"SITE change typed passwd new pass", getBob},
         "Enter new password for typed@staff"},
        {"a password for nobody",
         [](auto& p) {
             UserForm form = p.bobsForm();
             form.txtUserName = "";
             p.admin().resetPassword(1, form);
         },
         {"new pass"},
         {},
         ""},
        {"an empty password",
         [](auto& p) { p.admin().resetPassword(1, p.bobsForm()); },
         {""},
         {},
         "Enter new password for bob@staff"},
        {"no password",
         [](auto& p) { p.admin().resetPassword(1, p.bobsForm()); },
         {},
         {},
         "Enter new password for bob@staff"},
        {"delete",
         [](auto& p) { p.admin().deleteUser(1, aliceRow); },
         {"yes"},
         {"SITE DELUSER alice"},
         "Are u sure u want to delete this user:\r\nalice@staff"},
        {"delete, thought better of",
         [](auto& p) { p.admin().deleteUser(1, aliceRow); },
         {"no"},
         {},
         "Are u sure u want to delete this user:\r\nalice@staff"},
        {"delete no row", [](auto& p) { p.admin().deleteUser(1, noRow); }, {"yes"}, {}, ""},
        {"delete a group",
         [](auto& p) { p.admin().deleteGroup(1, 1); },
         {"yes"},
         {"SITE GRPDEL guests"},
         "Are u sure u want to delete this group:\r\nguests\r\n\r\n"
         "Note: make sure the group has no members, otherwise it can not be deleted"},
        {"open no row", [](auto& p) { p.admin().openUser(1, noRow); }, {}, {}, ""},
    };
}

TEST(AdminActions, SendWhatTheyShould) {
    for (const EditCase& row : editCases()) {
        Administering program;
        program.openBob();
        program.prompts.answers.assign(row.answers.begin(), row.answers.end());
        row.act(program);
        Script script;
        for (const std::string& line : row.sent) {
            script.push_back(expect(line));
            script.push_back(send(line == getBob ? bobFile : ok));
        }
        program.answer(script, row.name);
        EXPECT_EQ(program.prompts.asked,
                  row.asked.empty() ? std::vector<std::string>{} : std::vector{row.asked})
            << row.name;
    }
}

TEST(AdminActions, NothingGoesOutWhileTheBoxesShowAnotherAccount) {
    Administering program;
    program.openBob();
    UserForm form = program.bobsForm();
    form.txtUserTagLine = "meant for bob";
    program.admin().openUser(1, aliceRow);
    program.prompts.answers = {"password"};
    for (const std::string& uid : {std::string("7"), std::string(), std::string("99999")}) {
        form.txtUserUID = uid;
        program.admin().saveUser(1, form);
        program.admin().addMask(1, form);
        program.admin().deleteMask(1, form);
        program.admin().resetPassword(1, form);
        EXPECT_EQ(program.admin().editedUser(1, uid), -1);
    }
    program.admin().openGroup(1, 0);
    program.answer({expect(getAlice), send(aliceFile), expect("SITE CorvelExt groupfile 1"), send(staffFile)},
                   "only the clicks");
    GroupForm group = InfoToForm(program.session(1).Groups[0], program.session(1).Users);
    group.txtGroupname = "meant for staff";
    program.admin().openGroup(1, 1);
    program.admin().saveGroup(1, group);
    program.answer({expect("SITE CorvelExt groupfile 2"), send(staffFile)}, "only the click on a group");
    EXPECT_TRUE(program.prompts.asked.empty());
    EXPECT_EQ(program.admin().editedUser(1, "3"), 1);
}

TEST(AdminActions, ChangesAreNotComparedWithARecordWithoutDetails) {
    Administering program;
    program.openBob();
    const UserForm form = program.bobsForm();
    program.admin().reloadUsers(1);
    program.answer({expect(getUsers), send(userTable)}, "table");
    UserForm master = form;
    master.txtUserFlags = "3M";
    program.admin().saveUser(1, master);
    program.answer({}, "save");
    EXPECT_TRUE(program.prompts.asked.empty());
}

TEST(AdminActions, SortingMovesRowsAndKeepsTheCurrentAccount) {
    Administering program;
    program.openBob();
    program.admin().sortUsers(1, 0);
    EXPECT_EQ(program.session(1).userView.rows, (std::vector<std::size_t>{1, 0, 2}));
    EXPECT_EQ(program.admin().currentUserRow(1), 1);
    EXPECT_EQ(program.admin().currentUser(1), 0);
    program.admin().sortUsers(1, 0);
    program.admin().reloadUsers(1);
    program.answer({expect(getUsers), send(userTable)}, "table");
    EXPECT_EQ(program.session(1).userView.rows, (std::vector<std::size_t>{2, 0, 1}));
    program.admin().openUser(1, 2);
    program.answer({expect(getAlice), send(aliceFile)}, "the row as it is shown");
    program.main.disconnectSite(1);
    EXPECT_TRUE(program.session(1).userView.rows.empty());
    EXPECT_EQ(program.admin().currentUserRow(1), -1);
}

TEST(AdminActions, OneSequenceRunsAtATime) {
    Administering program;
    BatchForm form;
    form.chkBatchTagLine = true;
    form.txtBatchTagline = "hi";
    const std::vector<std::string_view> names = {"bob", "alice"};
    const CommandSequence batch = batchSequence(form, names).value();
    EXPECT_EQ(program.admin().batchProgress(1), "");
    EXPECT_TRUE(program.admin().startSequence(1, batch));
    EXPECT_EQ(program.admin().batchProgress(1), "0 of 2");
    EXPECT_FALSE(program.admin().startSequence(1, batch));
    program.answer({expect("NOOP"), send(ok), expect("site change bob tagline hi")}, "first half");
    EXPECT_EQ(program.admin().batchProgress(1), "1 of 2");
    EXPECT_FALSE(program.admin().startSequence(1, batch));
    EXPECT_EQ(program.prompts.asked, (std::vector<std::string>(2, std::string(sequenceRunning))));
    program.answer({send(ok), expect("site change alice tagline hi"), send(ok)}, "second half");
    EXPECT_EQ(program.admin().batchProgress(1), "");
    const std::string log = program.commandResults(1);
    EXPECT_EQ(log.find("-------------[ BEGIN ]-[ BATCH COMMAND ]-------------"), 0U);
    EXPECT_NE(log.find("-------------[ END ]-[ BATCH COMMAND ]-------------"), std::string::npos);
    EXPECT_TRUE(program.admin().startSequence(1, batch)) << "the first one is over";
}

// What is left of a sequence survives its connection, but nothing of it goes out on the next one: the
// scripts fail at any line that they do not expect.
TEST(AdminActions, NothingOfALostSequenceGoesOutLater) {
    AddUserForm form;
    form.txtUserName = "eve";
    form.txtPassword = "secret";
    form.txtMainGroup = "staff";
    form.lstUserIP = {"*@*"};
    const CommandSequence adding = addUserSequence(form);
    BatchForm ticked;
    ticked.chkBatchFlags = true;
    const std::vector<std::string_view> names = {"bob", "alice"};
    const CommandSequence batch = batchSequence(ticked, names).value();
    for (const CommandSequence& lost : {adding, batch}) {
        const std::string next = lost.sBatchLines.substr(0, lost.sBatchLines.find('\r'));
        for (const bool isAnswered : {true, false}) {
            Administering program;
            EXPECT_TRUE(program.admin().startSequence(1, lost));
            const Script started = {expect(lost.first.sCommand)};
            program.answer(isAnswered ? started + Script{send(ok), expect(next), hangUp()}
                                      : started + Script{hangUp()},
                           "lost");
            EXPECT_EQ(program.admin().batchProgress(1), "");
            program.main.connectSite(1);
            program.answer(loginScript("bob", "secret"), "again");
            program.admin().reloadUsers(1);
            program.answer({expect(getUsers), send(userTable)}, "table");
            EXPECT_TRUE(program.admin().startSequence(1, batch));
            program.answer({expect("NOOP"), send(ok), expect("site change bob flags "), send(ok),
                            expect("site change alice flags "), send(ok)},
                           "another");
        }
    }
}

TEST(AdminActions, ARefusedAccountGetsNoProperties) {
    Administering program;
    const CommandSequence adding{"begin",
                                 LogKind::console,
                                 "site change eve flags 3\r\n",
                                 {"SITE gadduser staff eve secret *@*", false, handler::addUser, -1}};
    EXPECT_TRUE(program.admin().startSequence(1, adding));
    program.answer({expect(adding.first.sCommand), send("550 no\r\n")}, "refused");
    EXPECT_EQ(program.session(1).sBatchLines.left(), 0U);
    EXPECT_EQ(program.commandResults(1).find("END"), std::string::npos);
}

} // namespace
} // namespace corvel::test

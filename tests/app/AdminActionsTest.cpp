#include "app/AdminActions.h"

#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <algorithm>
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
const std::string getStaff = "SITE CorvelExt groupfile 1";
const std::string getAlice = "SITE CorvelExt userfile 3";
const std::string ok = "200 ok\r\n";

// Rows as they are shown, and the places in the table.
constexpr int bobRow = 0;
constexpr int aliceRow = 1;
constexpr int noRow = 3;

// Logged in, with the two tables read.
struct Administering : LoggedIn {
    explicit Administering(Cutting cutting = {}) {
        admin().reloadUsers(1);
        admin().reloadGroups(1);
        answer({expect(getUsers), send(userTable), expect(getGroups), send(groupTable)}, "tables", cutting);
        views.calls.clear();
    }

    AdminActions& admin() { return main.admin(); }
    void reloadUsers() {
        admin().reloadUsers(1);
        answer({expect(getUsers), send(userTable)}, "table");
    }
    void openBob() {
        admin().openUser(1, bobRow);
        answer({expect(getBob), send(bobFile)}, "open bob");
    }
    UserForm bobsForm() const { return InfoToForm(session(1).Users[0], session(1).Groups); }
    bool told(const std::string& call) const { return std::ranges::count(views.calls, call) > 0; }
    bool consoleHas(const std::string& text) const { return console(1).find(text) != std::string::npos; }
};

TEST(AdminActions, TablesComeOutTheSameHoweverTheirRepliesAreCut) {
    for (const Cutting& cutting :
         everyCutting({expect(getUsers), send(userTable), expect(getGroups), send(groupTable)})) {
        const Administering program(cutting);
        const SiteSession& session = program.session(1);
        ASSERT_EQ(session.Users.size(), 3U) << cutting.cutAt;
        EXPECT_EQ(session.Users[2].sName, "g\xC3\xBCnter");
        EXPECT_EQ(session.userView.rows, (std::vector<std::size_t>{0, 1, 2}));
        EXPECT_EQ(session.Groups.size(), 2U);
        EXPECT_EQ(session.Groups[1].my_index, 1);
        EXPECT_TRUE(program.consoleHas("Reply to \"SITE CorvelExt usertable\": reply line 4: \"99999\""));
        EXPECT_FALSE(program.consoleHas("99998")) << "one line names the first alone";
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
    program.reloadUsers();
    EXPECT_EQ(program.session(1).userView.problem, "");
}

TEST(AdminActions, DetailsAreFetchedOnceAndShown) {
    Administering program;
    program.openBob();
    EXPECT_EQ(program.session(1).Users[0].sTagline, "hello");
    program.admin().openUser(1, bobRow);
    program.answer({}, "known");
    EXPECT_EQ(program.views.calls, (Texts{"userShown 1 0", "userShown 1 0"}));
    program.admin().openGroup(1, 0);
    program.answer({expect(getStaff), send(staffFile)}, "group");
    EXPECT_EQ(program.session(1).Groups[0].sDescription, "people");
    EXPECT_TRUE(program.told("groupShown 1 0"));

    program.admin().reloadUserfile(1);
    program.admin().reloadGroupfile(1);
    program.answer({expect(getBob), send(bobFile), expect(getStaff), send(staffFile)}, "again");
    program.reloadUsers();
    EXPECT_EQ(program.admin().currentUser(1), 0) << "a reload keeps the current account";
    program.openBob();
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
        EXPECT_EQ(program.consoleHas("Reply to \"" + getBob + "\": " + row.console), !row.console.empty())
            << row.name;
    }
}

TEST(AdminActions, DetailsGoToTheirAccountWhereverItsRowIsNow) {
    struct Row {
        const char* name;
        std::string table;
        int index; // of alice in the new table; -1: gone
    };
    const std::vector<Row> rows = {
        {"an empty table", "200 end\r\n", -1},
        {"a shorter table", "200- | 9 | carol | staff | 3\r\n200 end\r\n", -1},
        {"another account in its place",
         "200- | 9 | carol | staff | 3\r\n200- | 8 | dave | staff | 3\r\n200 end\r\n", -1},
        {"an account in front", "200- | 3 | alice | staff | 3\r\n" + userTable, 0},
        {"its place is past the end", "200- | 3 | alice | staff | 3\r\n200 end\r\n", 0},
    };
    for (const Row& row : rows) {
        Administering program;
        program.admin().reloadUsers(1);
        program.admin().openUser(1, aliceRow); // its place is taken from the table as it is now
        program.answer({expect(getUsers), send(row.table), expect(getAlice), send(aliceFile)}, row.name);
        const UserTable& users = program.session(1).Users;
        for (std::size_t i = 0; i < users.size(); ++i) {
            EXPECT_EQ(users[i].got_info, static_cast<int>(i) == row.index) << row.name << ' ' << i;
        }
        EXPECT_EQ(program.told("userShown 1 0"), row.index == 0) << row.name;
        EXPECT_FALSE(program.told("userShown 1 1")) << row.name;
        EXPECT_EQ(program.consoleHas("Reply to \"" + getAlice + "\": the user is not in the table"),
                  row.index < 0)
            << row.name;
    }
}

// The whole of what an action sends, each line answered, and of what it asks.
void expectSent(Administering& program, const std::string& name, const Texts& sent,
                const std::string& asked) {
    Script script;
    for (const std::string& line : sent) {
        script.push_back(expect(line));
        script.push_back(send(line == getBob ? bobFile : ok));
    }
    program.answer(script, name);
    EXPECT_EQ(program.prompts.asked, asked.empty() ? Texts{} : Texts{asked}) << name;
}

using EditorAction = void (AdminActions::*)(int, const UserForm&);

struct Typed {
    std::string UserForm::*box;
    const char* text;
};

// What an action on the editor of bob does after something was typed there.
void expectEdit(const std::string& name, EditorAction act, const std::vector<Typed>& typed,
                const Texts& answers, const Texts& sent, const std::string& asked) {
    Administering program;
    program.openBob();
    program.prompts.answers.assign(answers.begin(), answers.end());
    UserForm form = program.bobsForm();
    for (const Typed& box : typed) {
        form.*box.box = box.text;
    }
    (program.admin().*act)(1, form);
    expectSent(program, name, sent, asked);
}

TEST(AdminActions, EditorsSendWhatTheyShould) {
    using Form = UserForm;
    const std::string master = "You are giving this user the Master flag (M). Are u sure u want to continue?";
    const std::string password = "Enter new password for bob@staff";
    const EditorAction save = &AdminActions::saveUser;
    const EditorAction reset = &AdminActions::resetPassword;
    expectEdit("a tagline", save, {{&Form::txtUserTagLine, "hello "}}, {},
               {"SITE change bob tagline hello ", getBob}, "");
    expectEdit("flags of a master, thought better of", save,
               {{&Form::txtUserFlags, "3M"}, {&Form::txtUserTagLine, "boss"}}, {"no"},
               {"SITE change bob tagline boss", getBob}, master);
    expectEdit("flags of a master", save, {{&Form::txtUserFlags, "3M"}}, {"yes"},
               {"SITE CorvelExt setflags 7 3M", getBob}, master);
    expectEdit("add a mask", &AdminActions::addMask, {{&Form::txtUserIP, "*@10.1.*"}}, {},
               {"SITE addip bob *@10.1.*", getBob}, "");
    expectEdit("delete a mask", &AdminActions::deleteMask, {}, {}, {"SITE delip bob *@*", getBob}, "");
    expectEdit("a password for the name in the box", reset, {{&Form::txtUserName, "typed"}}, {"new pass"},
               {"SITE change typed passwd new pass", getBob}, "Enter new password for typed@staff");
    expectEdit("a password for nobody", reset, {{&Form::txtUserName, ""}}, {"new pass"}, {}, "");
    expectEdit("an empty password", reset, {}, {""}, {}, password);
    expectEdit("no password", reset, {}, {}, {}, password);
}

TEST(AdminActions, RowsSendWhatTheyShould) {
    struct Row {
        const char* name;
        void (AdminActions::*act)(int, int);
        int row;
        std::string answer;
        Texts sent;
        std::string asked;
    };
    const std::string alice = "Are u sure u want to delete this user:\r\nalice@staff";
    const std::string guests = "Are u sure u want to delete this group:\r\nguests\r\n\r\n"
                               "Note: make sure the group has no members, otherwise it can not be deleted";
    const std::vector<Row> rows = {
        {"delete", &AdminActions::deleteUser, aliceRow, "yes", {"SITE DELUSER alice"}, alice},
        {"delete, thought better of", &AdminActions::deleteUser, aliceRow, "no", {}, alice},
        {"delete no row", &AdminActions::deleteUser, noRow, "yes", {}, ""},
        {"delete a group", &AdminActions::deleteGroup, 1, "yes", {"SITE GRPDEL guests"}, guests},
        {"open no row", &AdminActions::openUser, noRow, "", {}, ""},
    };
    for (const Row& row : rows) {
        Administering program;
        program.prompts.answers = {row.answer};
        (program.admin().*row.act)(1, row.row);
        expectSent(program, row.name, row.sent, row.asked);
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
    program.answer({expect(getAlice), send(aliceFile), expect(getStaff), send(staffFile)}, "only the clicks");
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
    UserForm master = program.bobsForm();
    program.reloadUsers();
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
    program.reloadUsers();
    EXPECT_EQ(program.session(1).userView.rows, (std::vector<std::size_t>{2, 0, 1}));
    program.admin().openUser(1, 2);
    program.answer({expect(getAlice), send(aliceFile)}, "the row as it is shown");
    program.main.disconnectSite(1);
    EXPECT_TRUE(program.session(1).userView.rows.empty());
    EXPECT_EQ(program.admin().currentUserRow(1), -1);
}

TEST(AdminActions, ARefusedAccountGetsNoProperties) {
    Administering program;
    EXPECT_FALSE(program.admin().startSequence(
        1, {"begin",
            LogKind::console,
            "site change eve flags 3\r\n",
            {"SITE gadduser staff eve secret *@*", false, handler::addUser, -1}}));
    program.answer({expect("SITE gadduser staff eve secret *@*"), send("550 no\r\n")}, "refused");
    EXPECT_EQ(program.session(1).sBatchLines.left(), 0U);
    EXPECT_EQ(program.commandResults(1).find("END"), std::string::npos);
}

} // namespace
} // namespace corvel::test

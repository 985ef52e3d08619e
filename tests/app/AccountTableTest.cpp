#include "app/AccountTable.h"

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
const std::string getStaff = "SITE CorvelExt groupfile 1";
const std::string ok = "200 ok\r\n";

// Rows as they are shown.
constexpr int bobRow = 0;
constexpr int aliceRow = 1;
constexpr int guenterRow = 2;

// The boxes of the user editor.
constexpr std::size_t nameBox = 0;
constexpr std::size_t flagsBox = UserForm::flagsBox;
constexpr std::size_t taglineBox = 2;

// Logged in, with the two tables read.
struct Administering : LoggedIn {
    Administering() {
        users().reload(1);
        groups().reload(1);
        answer({expect(getUsers), send(userTable), expect(getGroups), send(groupTable)}, "tables");
        views.calls.clear();
    }

    AccountTable<UserKind>& users() { return main.admin().users(); }
    AccountTable<GroupKind>& groups() { return main.admin().groups(); }
    void open(int row, const std::string& command, const std::string& file) {
        users().open(1, row);
        answer({expect(command), send(file)}, "open");
    }
    void openBob() { open(bobRow, getBob, bobFile); }
    AccountEditor<UserForm> editor() { return users().editor(1); }
    // What is typed in a box of the open user and not saved.
    std::string typed(std::size_t box) {
        const Draft* const draft = editor().draft;
        return draft == nullptr || !draft->boxes.contains(box) ? "(nothing)" : draft->boxes.at(box);
    }
    bool consoleHas(const std::string& text) const { return console(1).find(text) != std::string::npos; }
};

TEST(AccountTable, TablesAreReadAsFarAsTheyCanBe) {
    Administering program;
    const SiteSession& session = program.session(1);
    ASSERT_EQ(session.Users.size(), 3U);
    EXPECT_EQ(session.Users[2].sName, "g\xC3\xBCnter");
    EXPECT_TRUE(program.consoleHas("Reply to \"SITE CorvelExt usertable\": reply line 4: \"99999\""));
    EXPECT_FALSE(program.consoleHas("99998")) << "one line names the first alone";
    program.openBob();
    program.users().reload(1);
    program.answer({expect(getUsers), send("500-What\r\n500 Unknown command.\r\n")}, "refused");
    EXPECT_TRUE(session.userView.rows.empty());
    EXPECT_EQ(session.userView.problem, "500 Unknown command.");
    EXPECT_FALSE(program.editor().id);
}

TEST(AccountTable, DetailsAreFetchedOnceAndAgainForANewTable) {
    Administering program;
    program.openBob();
    EXPECT_EQ(program.editor().form.txtUserTagLine, "hello");
    EXPECT_FALSE(program.consoleHas("hello")) << "nobody typed the command";
    program.users().open(1, bobRow);
    program.groups().open(1, 0);
    program.answer({expect(getStaff), send(staffFile)}, "bob is known");
    EXPECT_EQ(program.groups().editor(1).form.txtGroupdescr, "people");
    program.users().reloadDetails(1);
    program.users().reload(1);
    program.answer({expect(getBob), send(bobFile), expect(getUsers), send(userTable), expect(getBob)}, "F5");
    EXPECT_EQ(program.editor().details, Details::asked);
    EXPECT_EQ(program.editor().form.txtUserName, "bob") << "the name alone, until they come";
    EXPECT_EQ(program.editor().form.txtUserTagLine, "");
    program.answer({send(bobFile)}, "details");
    EXPECT_EQ(program.editor().details, Details::known);
    program.main.admin().forgetDetails(1);
    program.answer({expect(getBob), send(bobFile), expect(getStaff), send(staffFile)}, "forgotten");
}

// A key that is held down over the list while the server is slow.
TEST(AccountTable, NewestWishForDetailsCounts) {
    Administering program;
    for (int i = 0; i < 15; ++i) {
        for (const int row : {bobRow, aliceRow, guenterRow}) {
            program.users().open(1, row);
        }
    }
    program.users().open(1, aliceRow);
    program.answer({expect(getBob), send(bobFile), expect(getAlice), send(aliceFile)}, "first and last");
    EXPECT_EQ(program.editor().id, 3);
    EXPECT_EQ(program.editor().details, Details::known);
}

TEST(AccountTable, BadDetailsAreSaidAndHealedByAReload) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        // and what the console says
        {"550 no such user\r\n", ""},
        {"200-tagline | new\r\n200-groups | 1 | 40000\r\n200 end\r\n", "reply line 2: "},
        {"200-flags\r\n200 end\r\n", "reply line 1: "},
    };
    for (const auto& [reply, said] : rows) {
        Administering program;
        program.open(bobRow, getBob, reply);
        EXPECT_EQ(program.editor().details, Details::refused) << reply;
        EXPECT_NE(program.editor().problem, "") << reply;
        EXPECT_EQ(program.editor().form.txtUserName, "bob") << reply;
        EXPECT_EQ(program.consoleHas("Reply to \"" + getBob + "\": " + said), !said.empty()) << reply;
        program.users().save(1);
        EXPECT_NE(program.commandResults(1).find("Not saved: "), std::string::npos) << reply;
        program.users().reload(1);
        program.answer({expect(getUsers), send(userTable), expect(getBob), send(bobFile)}, reply);
        EXPECT_EQ(program.editor().form.txtUserTagLine, "hello") << reply;
    }
}

TEST(AccountTable, DetailsGoToTheirAccountWhereverItsRowIsNow) {
    const std::vector<std::pair<std::string, int>> tables = {
        // and alice's place in them, -1 for none
        {"200 end\r\n", -1},
        {"200- | 9 | carol | staff | 3\r\n200- | 8 | dave | staff | 3\r\n200 end\r\n", -1},
        {"200- | 3 | alice | staff | 3\r\n" + userTable, 0},
    };
    for (const auto& [table, index] : tables) {
        Administering program;
        program.users().reload(1);
        program.users().open(1, aliceRow); // its place is taken from the table as it is now
        program.answer({expect(getUsers), send(table), expect(getAlice), send(aliceFile)}, table);
        const UserTable& users = program.session(1).Users;
        for (std::size_t i = 0; i < users.size(); ++i) {
            EXPECT_EQ(users[i].got_info, static_cast<int>(i) == index) << table << ' ' << i;
        }
        EXPECT_EQ(program.consoleHas("Reply to \"" + getAlice + "\": the user is not in the table"),
                  index < 0);
    }
}

TEST(AccountTable, EditorsAskAndSendWhatTheyShould) {
    const std::string master = "You are giving this user the Master flag (M). Are u sure u want to continue?";
    const std::string deletion = "Are u sure u want to delete this user:\r\nalice@staff";
    const Script readAgain = {expect(getBob), send(bobFile)};
    Administering program;
    AccountTable<UserKind>& users = program.users();
    program.openBob();
    program.prompts.answers = {"no", "yes", "new pass", "", "no", "yes"};
    users.typed(1, flagsBox, "3M");
    users.typed(1, taglineBox, "boss");
    users.save(1);
    program.answer(Script{expect("SITE change bob tagline boss"), send(ok)} + readAgain, "all but the flags");
    users.save(1);
    program.answer(Script{expect("SITE CorvelExt setflags 7 3M"), send(ok)} + readAgain, "the flags");
    users.typed(1, nameBox, "typed");
    program.main.admin().resetPassword(1);
    program.answer(Script{expect("SITE change typed passwd new pass"), send(ok)} + readAgain, "a password");
    users.typed(1, nameBox, ""); // nobody, then no password, then a deletion that was thought better of
    program.main.admin().resetPassword(1);
    users.typed(1, nameBox, std::nullopt);
    program.main.admin().resetPassword(1);
    users.remove(1, {aliceRow});
    program.answer({}, "nothing more");
    users.remove(1, {aliceRow});
    program.answer({expect("SITE DELUSER alice"), send(ok)}, "a deletion");
    program.prompts.answers = {"yes"};
    users.remove(1, {99, aliceRow, bobRow});
    program.answer({expect("SITE DELUSER alice"), send(ok), expect("SITE DELUSER bob")}, "of several");
    EXPECT_EQ(program.prompts.asked,
              (Texts{master, master, "Enter new password for typed@staff", "Enter new password for bob@staff",
                     deletion, deletion,
                     "Are u sure u want to delete these 2 users:\r\nalice@staff\r\nbob@staff"}));
}

TEST(AccountTable, WhatIsTypedStaysUntilItIsSavedOrThrownAway) {
    Administering program;
    program.openBob();
    program.users().typed(1, taglineBox, "half a sent");
    program.main.admin().addMask(1, "a@b");
    program.answer({expect("SITE addip bob a@b"), send(ok), expect(getBob), send(bobFile)}, "a mask");
    EXPECT_EQ(program.typed(taglineBox), "half a sent") << "the reply is for the same account";
    program.open(aliceRow, getAlice, aliceFile);
    EXPECT_EQ(program.typed(taglineBox), "(nothing)");
    EXPECT_TRUE(program.users().hasDraft(1, 0));
    program.users().reload(1);
    program.answer({expect(getUsers), send(userTable), expect(getAlice), send(aliceFile)}, "F5");
    program.openBob();
    EXPECT_EQ(program.typed(taglineBox), "half a sent");

    program.users().typed(1, taglineBox, "half a sentence");
    program.users().save(1);
    program.users().typed(1, flagsBox, "3V"); // typed on while the save is under way
    program.answer(
        {expect("SITE change bob tagline half a sentence"), send(ok), expect(getBob), send(bobFile)}, "save");
    EXPECT_EQ(program.typed(taglineBox), "(nothing)");
    EXPECT_EQ(program.typed(flagsBox), "3V");
    program.users().save(1);
    program.answer(
        {expect("SITE CorvelExt setflags 7 3V"), send("550 no\r\n"), expect(getBob), send(bobFile)},
        "refused");
    EXPECT_EQ(program.typed(flagsBox), "3V") << "the server has not taken it";
    program.users().typed(1, taglineBox, "taken");
    program.users().save(1);
    program.answer({expect("SITE CorvelExt setflags 7 3V"), send("550 no\r\n"),
                    expect("SITE change bob tagline taken"), send(ok), expect(getBob),
                    send("200-username | bob\r\n200-tagline | taken\r\n200 end\r\n")},
                   "refused in part");
    EXPECT_EQ(program.typed(taglineBox), "(nothing)");
    EXPECT_EQ(program.typed(flagsBox), "3V");

    program.prompts.answers = {"no", "yes"};
    program.users().reloadDetails(1);
    program.answer({}, "thought better of");
    EXPECT_EQ(program.typed(flagsBox), "3V");
    program.users().reloadDetails(1);
    program.answer({expect(getBob), send(bobFile)}, "thrown away");
    EXPECT_FALSE(program.users().hasDraft(1, 0));
}

TEST(AccountTable, DraftsOutliveTheConnectionAndTheVanishedAreNamed) {
    Administering program;
    program.openBob();
    program.users().typed(1, taglineBox, "typed");
    program.answer({hangUp()}, "gone");
    program.logIn();
    program.users().reload(1);
    program.answer({expect(getUsers), send(userTable)}, "back");
    program.openBob();
    EXPECT_EQ(program.typed(taglineBox), "typed");
    program.users().reload(1);
    program.answer({expect(getUsers), send("200- | 7 | carol | staff | 3\r\n200 end\r\n"), expect(getBob),
                    send("200-username | carol\r\n200 end\r\n")},
                   "another account has the number");
    EXPECT_EQ(program.typed(taglineBox), "(nothing)");
    EXPECT_NE(program.commandResults(1).find("What was typed for user bob is lost"), std::string::npos);
}

// Toggles act on what is so now, not on what was read an hour ago.
TEST(AccountTable, TheDialogOfGroupsOpensOnFreshDetailsAlone) {
    Administering program;
    program.openBob();
    program.main.admin().editGroups(1);
    EXPECT_FALSE(program.told("dialogWanted 1 4"));
    program.answer({expect(getBob), send("550 gone\r\n")}, "refused");
    EXPECT_FALSE(program.told("dialogWanted 1 4"));
    program.main.admin().editGroups(1);
    program.answer({expect(getBob), send(bobFile)}, "read");
    EXPECT_TRUE(program.told("dialogWanted 1 4"));
}

} // namespace
} // namespace corvel::test

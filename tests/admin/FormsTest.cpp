#include "admin/AccountEditors.h"
#include "admin/AdminSupport.h"
#include "admin/Batch.h"
#include "admin/ShownCommand.h"

#include <gtest/gtest.h>

#include <array>

namespace corvel {
namespace {

TEST(ShownCommand, HidesTheWordsThatArePasswords) {
    const std::vector<std::array<std::string, 2>> rows = {
        {"SITE change bob passwd two words", "SITE change bob passwd *****"},
        {"site  Change bob PASSWD x", "site  Change bob PASSWD *****"},
        {"SITE gadduser staff bob secret *@* *@10.*", "SITE gadduser staff bob ***** *@* *@10.*"},
        {"SITE ADDUSER bob secret", "SITE ADDUSER bob *****"},
        {"SITE passwd secret", "SITE passwd *****"},
        {"SITE change passwd passwd", "SITE change passwd passwd"},
        {"SITE change bob tagline passwd x", "SITE change bob tagline passwd x"},
        {"SITE gadduser staff bob ", "SITE gadduser staff bob "},
        {"STAT -a", "STAT -a"},
    };
    for (const auto& [command, shown] : rows) {
        EXPECT_EQ(shownCommand(command, {.mask_passwords = true}), shown);
        EXPECT_EQ(shownCommand(command, {}), command);
    }
    EXPECT_EQ(shownCommand("pass secret", {}), "pass *****");
}

TEST(UserEditor, AsksBeforeTheMasterFlagChanges) {
    EXPECT_EQ(masterQuestion("M1", "M"),
              "You are changing the flags of a Master user (M). Are u sure u want to continue?");
    EXPECT_EQ(masterQuestion("3", "3M"),
              "You are giving this user the Master flag (M). Are u sure u want to continue?");
    EXPECT_FALSE(masterQuestion("M", "M"));
    EXPECT_FALSE(masterQuestion("3", "3m"));
}

// What is sent for the form of bob with one change.
void expectSaved(const char* name, const Texts& commands, void (*edit)(UserForm&)) {
    UserForm form = InfoToForm(bob(), threeGroups());
    edit(form);
    EXPECT_EQ(written(saveUserCommands(bob(), form, true)), commands) << name;
}

TEST(UserEditor, SavesWhatDiffersAndNothingElse) {
    expectSaved("the same numbers, typed otherwise", {}, [](UserForm& form) {
        form.txtUserBwDn = "0100";
        form.txtUserBwUp = "200.0 kB";
        form.txtUserLogins = {"02", "+1", " 3"};
    });
    expectSaved("numbers past every field, and none at all",
                {"107 SITE change bob speedlimit 100 99999999999999999999",
                 "107 SITE change bob logins 40000 ftp", "107 SITE change bob logins 0 http"},
                [](UserForm& form) {
                    form.txtUserBwUp = "99999999999999999999";
                    form.txtUserLogins = {"40000", "1", "x"};
                });
    expectSaved("everything, in order, under the old name",
                {"107 SITE CorvelExt setflags 7 ", "107 SITE change bob tagline t",
                 "107 SITE change bob vfsfile v", "107 SITE change bob homedir h", "107 SITE renuser bob rob",
                 "107 SITE change bob speedlimit 1 2", "107 SITE change bob logins 7 ftp",
                 "107 SITE change bob logins 8 telnet", "107 SITE change bob logins 9 http"},
                [](UserForm& form) {
                    for (std::size_t box = 0; box < UserForm::boxCount; ++box) {
                        form.box(box) = Texts{"rob", "", "t", "h", "v", "2", "1", "07", "8", "9"}[box];
                    }
                });
}

clsGroup staff() {
    clsGroup group;
    group.iGID = 1;
    group.ParseGroupFile(Lines{"200-groupname | staff", "200-description | the staff", "200-groupslots | 10",
                               "200-leechslots | 2", "200-vfs | /vfs", "200-members | 7 | 8",
                               "200-gadmins | 8"});
    return group;
}

TEST(GroupEditor, SavesWhatDiffersUnderTheOldName) {
    GroupForm form = InfoToForm(
        staff(), ParseUserTable(1, Lines{"p | 8 | eve | staff | 3", "p | 8 | late | x | 3"}).table);
    EXPECT_EQ(form.lvwGroupMembers, (std::vector<MemberRow>{{"7", "(bad_uid)", "No"}, {"8", "eve", "Yes"}}));
    EXPECT_EQ(form.lblGroupMembers, "2");
    EXPECT_EQ(written(saveGroupCommands(staff(), form)), Texts{});
    form.txtGroupGroupslots = "010";
    form.txtGroupLeechslots = "1234567890123456789";
    EXPECT_EQ(written(saveGroupCommands(staff(), form)),
              Texts{"106 SITE change staff groupslots 10 1234567890123456789"});
    for (std::size_t box = 0; box < GroupForm::boxCount; ++box) {
        form.box(box) = Texts{"crew", "d e", "", "2", "/new"}[box];
    }
    EXPECT_EQ(written(saveGroupCommands(staff(), form)),
              (Texts{"106 SITE change staff groupslots 0 2", "106 SITE change staff groupvfsfile /new",
                     "106 SITE change staff groupdescription d e", "106 SITE grpren staff crew"}));
}

TEST(AddUser, NamesTheFirstBoxThatDoesNotDo) {
    AddUserForm form;
    const auto problem = [&form] { return addUserProblem(form, {bob()}).value_or(""); };
    form.txtUserName = "e ve";
    EXPECT_EQ(problem(), "Please enter a valid username.");
    form.txtUserName = "bob";
    EXPECT_EQ(problem(), "This user already exists: bob\r\nGroup: staff\r\nFlags: 3");
    form.txtUserName = "Bob";
    EXPECT_EQ(problem(), "Please enter a valid password.");
}

TEST(AddUser, SendsTheUserAndThenItsProperties) {
    AddUserForm form = addUserForm(threeGroups());
    form.txtUserName = "eve";
    form.txtPassword = "secret";
    form.txtMainGroup = "staff";
    form.lstUserIP = {"a@1", "b@2", "", "c@3"};
    form.lstAllGroup[1].bSelected = form.lstAllGroup[2].bSelected = true;
    form.txtRatio = "05";
    form.txtNumOfLogins = {"02", "", "1.5"};
    const CommandSequence sequence = addUserSequence(form);
    EXPECT_EQ(written({sequence.first}), Texts{"109 tag -1 SITE gadduser staff eve secret a@1"});
    EXPECT_EQ(sequence.sBegin, "-------------[ BEGIN ]-[ ADDUSER ]-------------");
    EXPECT_EQ(sequence.sBatchLines, "site addip eve b@2 c@3\r\n"
                                    "site chgrp eve guests crew\r\n"
                                    "site change eve credits 0 0\r\n"
                                    "site change eve ratio 05 0\r\n"
                                    "site change eve tagline Too lame to have a tagline\r\n"
                                    "site change eve logins 2 ftp\r\n"
                                    "site change eve logins 0 telnet\r\n"
                                    "site change eve logins 2 http\r\n"
                                    "site change eve flags \r\n"
                                    "site change eve speedlimit 0 0\r\n");
}

TEST(AddGroup, RefusesNamesThatNoCommandCanCarry) {
    GroupTable groups = threeGroups();
    groups[2].ParseGroupFile(Lines{"200-description | the crew"});
    const std::string invalid = "Please enter a valid groupname.";
    for (const std::string& name : Texts{"", "a b", "a:b", "a/b", "a\"b", "a\tb", "a\x7F", {"a\0b", 3}}) {
        EXPECT_EQ(addGroupProblem({.txtGroupname = name}, groups), invalid) << name;
    }
    EXPECT_FALSE(addGroupProblem({.txtGroupname = "caf\xC3\xA9"}, groups));
    EXPECT_EQ(addGroupProblem({.txtGroupname = "crew"}, groups),
              "This group already exists: \r\nName: crew\r\nDescription: the crew\r\nUsercount: 12");
}

TEST(AddUser, StartsWithTheLastNumbersAndSaysWhatBecameOfIt) {
    EXPECT_EQ(addUserForm(threeGroups()).txtNumOfLogins, (std::array<std::string, 3>{"2", "0", "0"}));
    const AddUserForm last{.txtUserName = "eve\xE9", .lstUserIP = {"*@*"}, .txtRatio = "7"};
    const AddUserForm next = addUserForm(threeGroups(), &last);
    EXPECT_EQ(next.txtRatio + next.txtUserName, "7");
    EXPECT_EQ(addedText(last, "", ""), "eve\u00E9 added");
    EXPECT_EQ(addedText(last, "site change eve ratio 7 0", "550 no"), "eve\u00E9 added, but: 550 no");
    EXPECT_EQ(addedText(last, addUserSequence(last).first.sCommand, "550 no"), "");
}

TEST(Batch, HoldsALineForEveryTickedFieldOfEveryUser) {
    BatchForm form{.chkBatchLogins = true, .txtBatchLogins = {"02", "", "0"}};
    EXPECT_FALSE(batchSequence({}, Lines{"a"})) << "nothing ticked";
    EXPECT_FALSE(batchSequence(form, {})) << "nobody selected";
    form.chkBatchFlags = true;
    const auto sequence = batchSequence(form, Lines{"a", "b"});
    ASSERT_TRUE(sequence);
    EXPECT_EQ(written({sequence->first}), Texts{"113 quiet NOOP"});
    EXPECT_EQ(sequence->sBegin, "-------------[ BEGIN ]-[ BATCH COMMAND ]-------------");
    EXPECT_EQ(sequence->beginLog, LogKind::commandResults);
    EXPECT_EQ(sequence->sBatchLines,
              "site change a flags \r\nsite change a logins 02 ftp\r\nsite change a logins 0 http\r\n"
              "site change b flags \r\nsite change b logins 02 ftp\r\nsite change b logins 0 http\r\n");
    const BatchForm names{.chkBatchTagLine = true,
                          .chkBatchCommand = true,
                          .txtBatchTagline = "hi %user",
                          .txtBatchCommand = "%user%user x"};
    EXPECT_EQ(batchSequence(names, Lines{"a"})->sBatchLines, "site change a tagline hi %user\r\naa x\r\n");
}

TEST(Batch, SaysHowMuchItIsAndHowLongItTakes) {
    const BatchForm form{.chkBatchLogins = true, .chkBatchVFS = true, .txtBatchLogins = {"1", "", "2"}};
    EXPECT_EQ(batchPlanText(form, 1), "1 user, 3 commands");
    EXPECT_EQ(batchPlanText({.chkBatchCommand = true, .txtBatchCommand = ""}, 300), "300 users, 0 commands");
    const std::vector<std::tuple<std::size_t, std::int64_t, std::string>> cases = {
        {0, 5000, ""},
        {10, 1000, "about 9 s left"},
        {10, 60000, "about 9 min left"},
        {1, 600000, "about 16 h left"},
        {100, 1000, ""},
    };
    for (const auto& [done, milliseconds, text] : cases) {
        EXPECT_EQ(timeLeftText(done, 100, milliseconds), text);
    }
}

TEST(ChangeUserGroups, ANameInsideAnotherIsAnotherName) {
    const GroupTable groups =
        ParseGroupTable(1, Lines{"p | 1 | staff | 0", "p | 2 | sta | 0", "p | 4 | ff | 0"}).table;
    EXPECT_EQ(written(changeUserGroupsCommands(bob(), changeUserGroupsForm(bob(), groups))), Texts{});
    for (const std::string name : {"a|b", "|", "| x", "x |", "| |"}) { // their group, and one that is not
        const GroupTable odd =
            ParseGroupTable(1, Lines{"p | 1 | " + name + " | 0", "p | 4 | other | 0"}).table;
        EXPECT_EQ(written(changeUserGroupsCommands(bob(), changeUserGroupsForm(bob(), odd))), Texts{})
            << name;
    }
}

} // namespace
} // namespace corvel

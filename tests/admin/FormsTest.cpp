#include "admin/AccountChanges.h"
#include "admin/AdminForms.h"
#include "admin/AdminSupport.h"
#include "admin/GroupEditor.h"

#include <gtest/gtest.h>

namespace corvel {
namespace {

// That every box shows its own field, saving an untouched form proves below.
TEST(UserForm, ShowsTheListsOfTheRecord) {
    const UserForm form = InfoToForm(bob(), threeGroups());
    EXPECT_EQ((Texts{form.txtUserUID, form.txtUserGroup}), (Texts{"7", "staff"}));
    EXPECT_EQ(form.lstUserIP, Texts{"*@10.*"});
    EXPECT_EQ(form.lvwUserGroups, (std::vector<UserGroupRow>{
                                      {"1", "staff", "No"}, {"3", "crew", "Yes"}, {"9", "(bad_gid)", "No"}}));
    ASSERT_EQ(form.lvwUserSections.size(), 10U);
    EXPECT_EQ(form.lvwUserSections[0], (UserSectionRow{"0", "5", "1"}));
    EXPECT_EQ(form.lvwUserSections[1], (UserSectionRow{"1", "0", "-1"})) << "rounded down, not toward 0";
    EXPECT_EQ(form.lvwUserSections[2], (UserSectionRow{"2", "0", "0"}));
    EXPECT_EQ(form.lvwUserSections[9], (UserSectionRow{"9", "0", "-1"}));
    EXPECT_EQ(InfoToForm(clsUser(), threeGroups()).lvwUserGroups,
              (std::vector<UserGroupRow>{{"-1", "(bad_gid)", "Yes"}}));
}

TEST(UserEditor, AsksBeforeTheMasterFlagChanges) {
    const char* const changing =
        "You are changing the flags of a Master user (M). Are u sure u want to continue?";
    const char* const giving = "You are giving this user the Master flag (M). Are u sure u want to continue?";
    EXPECT_EQ(masterQuestion("M1", "1"), changing);
    EXPECT_EQ(masterQuestion("M1", "M"), changing);
    EXPECT_EQ(masterQuestion("3", "3M"), giving);
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
    expectSaved("a trailing blank in the tagline", {"107 SITE change bob tagline hello "},
                [](UserForm& form) { form.txtUserTagLine += " "; });
    expectSaved("download limit alone", {"107 SITE change bob speedlimit 050 200"},
                [](UserForm& form) { form.txtUserBwDn = "050"; });
    expectSaved("the same numbers, typed otherwise, and boxes that are only shown", {}, [](UserForm& form) {
        form.txtUserBwDn = "0100";
        form.txtUserBwUp = "200.0 kB";
        form.txtUserLogins = {"02", "+1", " 3"};
        form.txtUserGroup = "x";
        form.txtUserUID = "9";
        form.lstUserIP.clear();
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
                               "200-leechslots | 2", "200-vfs | /vfs", "200-members | 7 | 9 | 8",
                               "200-gadmins | 8"});
    return group;
}

TEST(GroupForm, ShowsTheMembersOfTheRecord) {
    const GroupForm form = InfoToForm(
        staff(),
        ParseUserTable(1, Lines{"p | 7 | bob | staff | 3", "p | 8 | eve | staff | 3", "p | 8 | late | x | 3"})
            .table);
    EXPECT_EQ((Texts{form.txtGroupGID, form.lblGroupMembers}), (Texts{"1", "3"}));
    EXPECT_EQ(form.lvwGroupMembers, (std::vector<GroupMemberRow>{
                                        {"7", "bob", "No"}, {"9", "(bad_uid)", "No"}, {"8", "eve", "Yes"}}));
}

TEST(GroupEditor, SavesWhatDiffersUnderTheOldName) {
    struct Row {
        const char* name;
        Texts boxes; // name, description, group slots, leech slots, VFS file
        Texts commands;
    };
    const std::vector<Row> rows = {
        {"the same numbers", {"staff", "the staff", "010", "2", "/vfs"}, {}},
        {"leech slots alone",
         {"staff", "the staff", "10", "03", "/vfs"},
         {"106 SITE change staff groupslots 10 3"}},
        {"a number past its field",
         {"staff", "the staff", "123456789012345678901", "2", "/vfs"},
         {"106 SITE change staff groupslots 123456789012345678901 2"}},
        {"everything",
         {"crew", "d e", "", "2", "/new"},
         {"106 SITE change staff groupslots 0 2", "106 SITE change staff groupvfsfile /new",
          "106 SITE change staff groupdescription d e", "106 SITE grpren staff crew"}},
    };
    for (const Row& row : rows) {
        GroupForm form = InfoToForm(staff(), emptyUserTable());
        for (std::size_t box = 0; box < GroupForm::boxCount; ++box) {
            form.box(box) = row.boxes[box];
        }
        EXPECT_EQ(written(saveGroupCommands(staff(), form)), row.commands) << row.name;
    }
    EXPECT_EQ(written(saveGroupCommands(staff(), InfoToForm(staff(), emptyUserTable()))), Texts{});
}

AddUserForm goodForm() {
    AddUserForm form = addUserForm(threeGroups());
    form.txtUserName = "eve";
    form.txtPassword = "secret";
    form.txtMainGroup = "staff";
    form.lstUserIP = {"*@10.*"};
    form.txtUserFlags = "3";
    form.txtUserCredits = "3";
    form.txtRatio = "05";
    form.txtNumOfLogins = {"02", "", "1.5"};
    form.txtUserBwUp = "20";
    form.txtUserBwDn = "10";
    return form;
}

TEST(AddUser, ChecksInOrder) {
    struct Row {
        const char* name;
        const char* txtUserName;
        const char* txtPassword;
        const char* txtMainGroup;
        bool hasMask;
        const char* problem; // empty: none
    };
    const std::vector<Row> rows = {
        {"nothing wrong", "eve", "secret", "staff", true, ""},
        {"all wrong", "", "", "", false, "Please enter a valid username."},
        {"blank in the name", "e ve", "secret", "staff", true, "Please enter a valid username."},
        {"name taken, and no password", "bob", "", "staff", true,
         "This user already exists: bob\r\nGroup: staff\r\nFlags: 3"},
        {"another case is another name", "Bob", "secret", "staff", true, ""},
        {"no password, and no group", "eve", "", "", true, "Please enter a valid password."},
        {"no main group, and no mask", "eve", "secret", "", false, "Please select a main group."},
        {"no mask", "eve", "secret", "staff", false, "Please enter at least one ip/ident."},
    };
    for (const Row& row : rows) {
        AddUserForm form = goodForm();
        form.txtUserName = row.txtUserName;
        form.txtPassword = row.txtPassword;
        form.txtMainGroup = row.txtMainGroup;
        form.lstUserIP.resize(row.hasMask ? 1 : 0);
        EXPECT_EQ(addUserProblem(form, {bob()}).value_or(""), row.problem) << row.name;
    }
}

TEST(AddUser, SendsTheUserAndThenItsProperties) {
    AddUserForm form = goodForm();
    const CommandSequence plain = addUserSequence(form);
    EXPECT_EQ(written({plain.first}), Texts{"109 tag -1 SITE gadduser staff eve secret *@10.*"});
    EXPECT_EQ(plain.sBegin, "-------------[ BEGIN ]-[ ADDUSER ]-------------");
    const std::string common = "site change eve credits 3072 0\r\n"
                               "site change eve ratio 05 0\r\n"
                               "site change eve tagline Too lame to have a tagline\r\n"
                               "site change eve logins 2 ftp\r\n"
                               "site change eve logins 0 telnet\r\n"
                               "site change eve logins 2 http\r\n"
                               "site change eve flags 3\r\n"
                               "site change eve speedlimit 10 20\r\n";
    EXPECT_EQ(plain.sBatchLines, common);
    form.lstUserIP = {"a@1", "b@2", "", "c@3"};
    form.lstAllGroup[1].bSelected = form.lstAllGroup[2].bSelected = true;
    EXPECT_EQ(addUserSequence(form).first.sCommand, "SITE gadduser staff eve secret a@1");
    EXPECT_EQ(addUserSequence(form).sBatchLines,
              "site addip eve b@2 c@3\r\nsite chgrp eve guests crew\r\n" + common);
}

TEST(AddGroup, RefusesNamesThatNoCommandCanCarry) {
    GroupTable groups = threeGroups();
    groups[2].sDescription = "the crew";
    const std::string invalid = "Please enter a valid groupname.";
    for (const std::string& name : Texts{"", "a b", "a:b", "a/b", "a\"b", "a\tb", "a\x7F", {"a\0b", 3}}) {
        EXPECT_EQ(addGroupProblem({.txtGroupname = name}, groups), invalid) << name;
    }
    for (const char* name : {"staf", "Staff", "caf\xC3\xA9", "a\\b", "a'b"}) {
        EXPECT_FALSE(addGroupProblem({.txtGroupname = name}, groups)) << name;
    }
    EXPECT_EQ(addGroupProblem({.txtGroupname = "crew"}, groups),
              "This group already exists: \r\nName: crew\r\nDescription: the crew\r\nUsercount: 12");
}

TEST(Batch, HoldsALineForEveryTickedFieldOfEveryUser) {
    BatchForm form{.chkBatchLogins = true, .txtBatchLogins = {"02", "", "0"}};
    EXPECT_FALSE(batchSequence({}, Lines{"a"})) << "nothing ticked";
    EXPECT_FALSE(batchSequence({.chkBatchLogins = true}, Lines{"a"})) << "only empty boxes";
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
    EXPECT_EQ(batchProgressText(300, 259), "41 of 300");
    EXPECT_EQ(batchProgressText(3, 9), "0 of 3");
}

TEST(ChangeUserGroups, ANameInsideAnotherIsAnotherName) {
    const GroupTable groups =
        ParseGroupTable(1, Lines{"p | 1 | staff | 0", "p | 2 | sta | 0", "p | 4 | ff | 0"}).table;
    EXPECT_EQ(written(changeUserGroupsCommands(bob(), changeUserGroupsForm(bob(), groups))), Texts{});
}

} // namespace
} // namespace corvel

#include "admin/UserEditor.h"

#include "admin/AdminSupport.h"
#include "admin/ChangeUserGroups.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

// That every box shows its own field, saving an untouched form proves below.
TEST(UserForm, ShowsTheListsOfTheRecord) {
    const UserForm form = InfoToForm(bob(), threeGroups());
    EXPECT_EQ(form.txtUserUID, "7");
    EXPECT_EQ(form.txtUserGroup, "staff");
    EXPECT_EQ(form.lstUserIP, Texts{"*@10.*"});
    EXPECT_EQ(form.lvwUserGroups, (std::vector<UserGroupRow>{
                                      {"1", "staff", "No"}, {"3", "crew", "Yes"}, {"9", "(bad_gid)", "No"}}));
    ASSERT_EQ(form.lvwUserSections.size(), 10U);
    EXPECT_EQ(form.lvwUserSections[0], (UserSectionRow{"0", "5", "1"}));
    EXPECT_EQ(form.lvwUserSections[1], (UserSectionRow{"1", "0", "-1"})) << "rounded down, not toward 0";
    EXPECT_EQ(form.lvwUserSections[2], (UserSectionRow{"2", "0", "0"}));
    EXPECT_EQ(form.lvwUserSections[9], (UserSectionRow{"9", "0", "-1"}));

    clsUser bare;
    bare.ParseUserFile(Lines{"200-ips | "});
    EXPECT_EQ(InfoToForm(bare, threeGroups()).lvwUserGroups,
              (std::vector<UserGroupRow>{{"-1", "(bad_gid)", "Yes"}}));
    EXPECT_EQ(InfoToForm(bare, threeGroups()).lstUserIP, Texts{});
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
    expectSaved("upload limit alone", {"107 SITE change bob speedlimit 100 -1"},
                [](UserForm& form) { form.txtUserBwUp = "-1"; });
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
                    form.txtUserFlags = "";
                    form.txtUserTagLine = "t";
                    form.txtUserVFS = "v";
                    form.txtUserHomePath = "h";
                    form.txtUserName = "rob";
                    form.txtUserBwDn = "1";
                    form.txtUserBwUp = "2";
                    form.txtUserLogins = {"07", "8", "9"};
                });
}

TEST(ChangeUserGroups, ANameInsideAnotherIsAnotherName) {
    const GroupTable groups =
        ParseGroupTable(1, Lines{"p | 1 | staff | 0", "p | 2 | sta | 0", "p | 4 | ff | 0"}).table;
    const ChangeUserGroupsForm form = changeUserGroupsForm(bob(), groups);
    EXPECT_EQ(written(changeUserGroupsCommands(bob(), form)), Texts{});
}

} // namespace
} // namespace corvel

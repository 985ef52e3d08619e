#include "admin/GroupEditor.h"

#include "admin/AddGroup.h"
#include "admin/AdminSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

clsGroup staff() {
    clsGroup group;
    group.iGID = 1;
    group.iUserCount = 3;
    group.ParseGroupFile(Lines{"200-groupname | staff", "200-description | the staff", "200-groupslots | 10",
                               "200-leechslots | 2", "200-vfs | /vfs", "200-members | 7 | 9 | 8",
                               "200-gadmins | 8"});
    return group;
}

// That every box shows its own field, saving an untouched form proves below.
TEST(GroupForm, ShowsTheMembersOfTheRecord) {
    const UserTable users =
        ParseUserTable(1, Lines{"p | 7 | bob | staff | 3", "p | 8 | eve | staff | 3", "p | 8 | late | x | 3"})
            .table;
    const GroupForm form = InfoToForm(staff(), users);
    EXPECT_EQ(form.txtGroupGID, "1");
    EXPECT_EQ(form.lvwGroupMembers, (std::vector<GroupMemberRow>{
                                        {"7", "bob", "No"}, {"9", "(bad_uid)", "No"}, {"8", "eve", "Yes"}}));
    EXPECT_EQ(form.lblGroupMembers, "3");
}

// What is sent for the form of staff with one change.
void expectSaved(const char* name, const Texts& commands, void (*edit)(GroupForm&)) {
    GroupForm form = InfoToForm(staff(), emptyUserTable());
    edit(form);
    EXPECT_EQ(written(saveGroupCommands(staff(), form)), commands) << name;
}

TEST(GroupEditor, SavesWhatDiffersUnderTheOldName) {
    expectSaved("nothing", {}, [](GroupForm&) {});
    expectSaved("leech slots alone", {"106 SITE change staff groupslots 10 3"},
                [](GroupForm& form) { form.txtGroupLeechslots = "03"; });
    expectSaved("the same number", {}, [](GroupForm& form) { form.txtGroupGroupslots = "010"; });
    expectSaved("a number past its field", {"106 SITE change staff groupslots 123456789012345678901 2"},
                [](GroupForm& form) { form.txtGroupGroupslots = "123456789012345678901"; });
    expectSaved("everything",
                {"106 SITE change staff groupslots 0 2", "106 SITE change staff groupvfsfile /new",
                 "106 SITE change staff groupdescription d e", "106 SITE grpren staff crew"},
                [](GroupForm& form) {
                    form.txtGroupGroupslots = "";
                    form.txtGroupVFS = "/new";
                    form.txtGroupdescr = "d e";
                    form.txtGroupname = "crew";
                    form.txtGroupGID = "55";
                });
}

AddGroupForm named(const std::string& name) {
    AddGroupForm form;
    form.txtGroupname = name;
    return form;
}

TEST(AddGroup, RefusesNamesThatNoCommandCanCarry) {
    const char* const invalid = "Please enter a valid groupname.";
    const std::vector<std::string> names = {"",     "a b",  "a:b",   "a/b",
                                            "a\"b", "a\tb", "a\x7F", std::string("a\0b", 3)};
    for (const std::string& name : names) {
        EXPECT_EQ(addGroupProblem(named(name), threeGroups()), invalid) << name;
    }
    for (const char* name : {"staf", "Staff", "caf\xC3\xA9", "a\\b", "a'b"}) {
        EXPECT_FALSE(addGroupProblem(named(name), threeGroups())) << name;
    }
    GroupTable groups = threeGroups();
    groups[2].sDescription = "the crew";
    EXPECT_EQ(addGroupProblem(named("crew"), groups),
              "This group already exists: \r\nName: crew\r\nDescription: the crew\r\nUsercount: 12");
}

} // namespace
} // namespace corvel

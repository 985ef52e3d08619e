#include "admin/qt/frmChangeUserGroups.h"

#include "admin/AdminSupport.h"
#include "widgets/DialogDriver.h"

#include <optional>

namespace corvel {
namespace {

// bob of AdminSupport is a member of staff and crew and an administrator of crew.
struct Fixture {
    clsUser user = bob();
    std::optional<ChangeUserGroupsForm> accepted;
    std::optional<std::string> problem;
    frmChangeUserGroups dialog{{user.sName, changeUserGroupsForm(user, threeGroups()), TextEncoding::utf8},
                               [this](const ChangeUserGroupsForm& form) {
                                   accepted = form;
                                   return problem;
                               }};
    DialogDriver driver{dialog};
};

TEST(frmChangeUserGroups, ClicksToggleOneEntryEach) {
    struct Row {
        const char* name;
        std::vector<int> groups, admins; // rows that are clicked
        Texts sent;
    };
    const std::vector<Row> table = {
        {"nothing", {}, {}, {}},
        {"into one group", {1}, {}, {"107 SITE chgrp bob guests "}},
        {"out of one, into another", {0, 1}, {}, {"107 SITE chgrp bob staff guests "}},
        {"groups before administrators",
         {0},
         {1},
         {"107 SITE chgrp bob staff ", "107 SITE change bob admingroup guests"}},
        {"twice is not at all", {2, 2}, {0, 0}, {}},
        {"admin of others",
         {},
         {0, 2},
         {"107 SITE change bob admingroup staff", "107 SITE change bob admingroup crew"}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        Fixture fixture;
        for (const int index : row.groups) {
            fixture.driver.clickRow("lstGroups", index);
        }
        for (const int index : row.admins) {
            fixture.driver.clickRow("lstGAdmin", index);
        }
        fixture.driver.click("cmdOK");
        ASSERT_TRUE(fixture.accepted);
        EXPECT_EQ(written(changeUserGroupsCommands(fixture.user, *fixture.accepted)), row.sent);
        EXPECT_FALSE(fixture.dialog.isVisible());
    }
}

TEST(frmChangeUserGroups, StaysOpenWithWhatCouldNotBeSent) {
    Fixture fixture;
    fixture.problem = "not connected";
    fixture.driver.click("cmdOK");
    EXPECT_EQ(fixture.driver.answer(), "not connected");
    EXPECT_TRUE(fixture.dialog.isVisible());
}

TEST(frmChangeUserGroups, CancelAndEscapeSendNothing) {
    Fixture fixture;
    EXPECT_EQ(fixture.driver.tabOrder(), (Texts{"lstGroups", "lstGAdmin", "cmdOK", "cmdCancel"}));
    fixture.driver.clickRow("lstGroups", 1);
    fixture.driver.click("cmdCancel");
    EXPECT_FALSE(fixture.dialog.isVisible());
    fixture.dialog.show();
    expectUsableByKeys(fixture.dialog);
    EXPECT_FALSE(fixture.accepted);
}

// Two groups that look the same on screen are still two groups, each with its own bytes.
TEST(frmChangeUserGroups, NamesComeBackAsTheServersBytes) {
    const GroupTable groups =
        ParseGroupTable(1, Lines{"p | 5 | caf\xE9\x07 | 1", "p | 6 | a\xC2\xA0z | 1"}).table;
    std::optional<ChangeUserGroupsForm> accepted;
    frmChangeUserGroups dialog({"bob", changeUserGroupsForm(bob(), groups), TextEncoding::windows1252},
                               [&](const ChangeUserGroupsForm& form) {
                                   accepted = form;
                                   return std::optional<std::string>();
                               });
    DialogDriver driver(dialog);
    EXPECT_EQ(driver.find<QListWidget>("lstGroups").item(0)->text().toStdString(), "caf\u00E9\u2407");
    driver.clickRow("lstGroups", 0);
    driver.press("lstGroups", Qt::Key_Return);
    ASSERT_TRUE(accepted);
    EXPECT_EQ(written(changeUserGroupsCommands(bob(), *accepted)),
              (Texts{"107 SITE chgrp bob caf\xE9\x07 "}));
}

} // namespace
} // namespace corvel

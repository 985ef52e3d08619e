#include "admin/qt/frmAddGroup.h"

#include "admin/AdminSupport.h"
#include "widgets/DialogDriver.h"

#include <optional>

namespace corvel {
namespace {

// On a site with the groups staff, guests and crew.
struct Fixture {
    std::optional<CommandSequence> started;
    frmAddGroup dialog{TextEncoding::utf8, [this](const AddGroupForm& form) {
                           std::optional<std::string> problem = addGroupProblem(form, threeGroups());
                           if (!problem) {
                               started = addGroupSequence(form);
                           }
                           return problem;
                       }};
    DialogDriver driver{dialog};
};

TEST(frmAddGroup, EveryBoxReachesItsCommand) {
    Fixture fixture;
    fixture.driver.type("txtGroupname", QStringLiteral("pilots"));
    fixture.driver.type("txtGroupdescr", QStringLiteral("who fly"));
    fixture.driver.type("txtGroupGroupslots", QStringLiteral("7"));
    fixture.driver.type("txtGroupLeechslots", QStringLiteral("02"));
    fixture.driver.type("txtGroupVFS", QStringLiteral("/vfs/pilots"));
    fixture.driver.press("txtGroupVFS", Qt::Key_Return);
    EXPECT_FALSE(fixture.dialog.isVisible());
    ASSERT_TRUE(fixture.started);
    EXPECT_EQ(written({fixture.started->first}), Texts{"110 tag -1 SITE grpadd pilots"});
    EXPECT_EQ(fixture.started->sBegin, "-------------[ BEGIN ]-[ ADDGROUP ]-------------");
    EXPECT_EQ(fixture.started->beginLog, LogKind::console);
    EXPECT_EQ(fixture.started->sBatchLines, "site change pilots groupslots 7 2\r\n"
                                            "site change pilots groupdescription who fly\r\n"
                                            "site change pilots groupvfsfile /vfs/pilots\r\n");
}

TEST(frmAddGroup, ABadNameIsSaidAndTheDialogStays) {
    Fixture fixture;
    fixture.driver.click("cmdOK");
    EXPECT_EQ(fixture.driver.answer(), "Please enter a valid groupname.");
    fixture.driver.type("txtGroupname", QStringLiteral("crew"));
    fixture.driver.click("cmdOK");
    EXPECT_EQ(fixture.driver.answer(),
              "This group already exists: \nName: crew\nDescription: \nUsercount: 12");
    EXPECT_FALSE(fixture.started);
    EXPECT_TRUE(fixture.dialog.isVisible());
    expectUsableByKeys(fixture.dialog);
}

TEST(frmAddGroup, AnEmptyMessageIsNotShownButKeepsTheDialog) {
    frmAddGroup dialog(TextEncoding::utf8, [](const AddGroupForm&) { return std::string(); });
    DialogDriver driver(dialog);
    EXPECT_EQ(driver.tabOrder(), (Texts{"txtGroupname", "txtGroupdescr", "txtGroupGroupslots",
                                        "txtGroupLeechslots", "txtGroupVFS", "cmdOK", "cmdCancel"}));
    driver.click("cmdOK");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.findChild<QMessageBox*>(), nullptr);
}

} // namespace
} // namespace corvel

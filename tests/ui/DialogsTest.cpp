#include "ui/WindowDriver.h"

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

using Names = std::vector<std::string>;

struct Case {
    const char* name;
    std::function<void(WindowDriver&)> open;
    Names tabOrder; // from the first box on, once round
};

std::function<void(WindowDriver&)> clickOn(const char* button) {
    return [button](WindowDriver& driver) { driver.find<QPushButton>(button).click(); };
}

std::function<void(WindowDriver&)> runOnPub(const char* command) {
    return [command](WindowDriver& driver) {
        driver.select(u"pub"_s);
        driver.run(command);
    };
}

Names sectionBoxes() {
    Names names;
    for (int section = 0; section < 10; ++section) {
        names.insert(names.end(),
                     {"txtRatio_" + std::to_string(section), "txtCredits_" + std::to_string(section)});
    }
    names.insert(names.end(), {"cmdSave", "cmdCancel"});
    return names;
}

class Dialogs : public DemoWindow {};

// What they all have in common: how keys go through them, that every input has a name, that Escape ends them.
TEST_F(Dialogs, AreUsedWithKeys) {
    const std::vector<Case> cases = {
        {"frmSitesAddEdit",
         [](WindowDriver& driver) { driver.chooseSitesMenu(3); },
         {"txtSitename", "txtHostname", "txtPort", "txtUsername", "txtPassword", "txtIdent",
          "chkConnectOnStartup", "chkUseSSLProxy", "OKButton", "CancelButton"}},
        {"frmSettings",
         clickOn("cmdSettings"),
         {"lvwAL", "cmdLvwMove_0", "cmdLvwMove_1", "chkALUseColors", "cmdColorPickers_0", "cmdColorPickers_1",
          "cmdColorPickers_2", "cmdColorPickers_3", "cmdColorPickers_4", "cmdColorPickers_5", "txtSSLHost",
          "txtSSLPort", "cmdSave", "cmdClose"}},
        {"frmBrowserCHMOD",
         runOnPub("chmod"),
         {"chkX_0", "chkX_1", "chkX_2", "chkX_3", "chkX_4", "chkX_5", "chkX_6", "chkX_7", "chkX_8",
          "txtCHMODval", "cmdOK", "cmdCancel", "txtPath"}},
        {"frmBrowserCHATTR",
         runOnPub("chattr"),
         {"chkFlags", "lstUsers", "lstGroups", "Command1", "cmdCancel", "txtDirectory", "txtCurrent"}},
        {"frmBrowserNUKE",
         runOnPub("nuke"),
         {"txtMultip", "txtReason", "cmdOK", "cmdCancel", "txtPath", "txtName"}},
        {"frmAddUser",
         clickOn("cmdUserAdd"),
         {"txtUserName", "txtPassword", "txtMainGroup", "txtUserFlags", "txtUserTagLine", "txtUserCredits",
          "txtRatio", "txtNumOfLogins_0", "txtNumOfLogins_1", "txtNumOfLogins_2", "txtUserBwUp",
          "txtUserBwDn", "lstAllGroup", "txtUserIP", "cmdUserAddDelIp_0", "cmdUserAddDelIp_1", "lstUserIP",
          "cmdOK", "cmdCancel"}},
        {"frmAddGroup",
         clickOn("cmdGroupAdd"),
         {"txtGroupname", "txtGroupdescr", "txtGroupGroupslots", "txtGroupLeechslots", "txtGroupVFS", "cmdOK",
          "cmdCancel"}},
        {"frmCopyUser",
         clickOn("cmdUserCopy"),
         {"txtNewUsername", "cmdOK", "cmdCancel", "txtSourceUsername", "txtSourceUID"}},
        {"frmChangeUserGroups",
         clickOn("cmdUserEditGroups"),
         {"lstGroups", "lstGAdmin", "cmdOK", "cmdCancel"}},
        {"frmUserSections",
         [](WindowDriver& driver) { emit driver.find<ReportView>("lvwUserSections").rowDoubleClicked(0); },
         sectionBoxes()},
    };
    startOn(usersTab);
    driver_->clickRow("lvwUsers_1", 1, u"alice"_s);
    ASSERT_TRUE(driver_->waitForIdle());
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        row.open(*driver_);
        auto* const dialog = driver_->waitForBox<QDialog>();
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(driver_->waitForIdle());
        EXPECT_EQ(dialog->objectName().toStdString(), row.name);
        for (const auto* const input : dialog->findChildren<QWidget*>()) {
            if (qobject_cast<const QLineEdit*>(input) != nullptr ||
                qobject_cast<const QComboBox*>(input) != nullptr ||
                qobject_cast<const QListWidget*>(input) != nullptr) {
                EXPECT_FALSE(input->accessibleName().isEmpty()) << input->objectName().toStdString();
            }
        }
        dialog->findChild<QWidget*>(QString::fromStdString(row.tabOrder.front()))->setFocus();
        Names names;
        do {
            names.push_back(dialog->focusWidget()->objectName().toStdString());
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        } while (dialog->focusWidget()->objectName().toStdString() != names.front() && names.size() < 100);
        EXPECT_EQ(names, row.tabOrder);
        QTest::keyClick(dialog, Qt::Key_Escape);
        ASSERT_TRUE(driver_->waitForNoDialog());
    }
}

} // namespace
} // namespace corvel::test

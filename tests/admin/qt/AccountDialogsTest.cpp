#include "admin/qt/AccountDialogs.h"

#include "admin/AdminSupport.h"
#include "admin/qt/BatchPanel.h"
#include "ui/WindowDriver.h"

#include <QComboBox>

using namespace Qt::StringLiterals;

namespace corvel {
namespace {

using test::Driver;

// A dialog over a form, and what became of it: how often it was confirmed, with what at last.
template <typename Dialog, typename Form>
struct Opened {
    Form form;
    TextEncoding encoding = TextEncoding::utf8;
    std::optional<std::string> problem = {};
    int confirmed = 0;
    Dialog dialog{{form, &encoding}, [this](const Form& filled) {
                      ++confirmed;
                      form = filled;
                      return problem;
                  }};
    Driver driver{dialog};
};
using AddUser = Opened<frmAddUser, AddUserForm>;
using ChangeUserGroups = Opened<frmChangeUserGroups, ChangeUserGroupsForm>;

TEST(FormDialog, StaysOpenForAsLongAsThereIsAProblem) {
    Opened<frmAddGroup, AddGroupForm> opened{{.txtGroupname = "caf\xE9"}, TextEncoding::windows1252};
    opened.driver.click("cmdCancel");
    EXPECT_FALSE(opened.dialog.isVisible());
    EXPECT_EQ(opened.confirmed, 0);
    opened.dialog.show();
    opened.problem = "not <b>sent\r\n\xE9";
    opened.driver.click("cmdOK");
    EXPECT_EQ(opened.form.txtGroupname, "caf\xE9");
    EXPECT_EQ(opened.dialog.findChild<QMessageBox*>()->textFormat(), Qt::PlainText);
    EXPECT_EQ(opened.driver.answer(QMessageBox::Ok), u"not <b>sent\n\u00E9"_s);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    opened.problem = ""; // the person was told
    opened.driver.click("cmdOK");
    EXPECT_EQ(opened.dialog.findChild<QMessageBox*>(), nullptr);
    EXPECT_TRUE(opened.dialog.isVisible());
    opened.problem.reset();
    opened.driver.setText("txtGroupname", u"th\u00E9"_s);
    opened.encoding = TextEncoding::utf8; // as the connection has shown since
    opened.driver.click("cmdOK");
    EXPECT_FALSE(opened.dialog.isVisible());
    EXPECT_EQ(opened.form.txtGroupname, "th\xC3\xA9");
    EXPECT_EQ(opened.confirmed, 3);
}

// Group membership is toggled: asked for twice, the account would leave its main group.
TEST(frmAddUser, EveryBoxReachesItsCommand) {
    AddUser opened{addUserForm(threeGroups())};
    Driver& driver = opened.driver;
    driver.press("txtMainGroup", Qt::Key_Down);
    driver.clickRow("lstAllGroup", 1);
    driver.clickRow("lstAllGroup", 2);
    driver.press("txtMainGroup", Qt::Key_Down);
    driver.setText("txtUserIP", u"*@1 *@2 x@*"_s);
    driver.press("txtUserIP", Qt::Key_Return);
    driver.setTexts({{"txtUserName", u"carl"_s},
                     {"txtPassword", u"secret"_s},
                     {"txtUserFlags", u"3"_s},
                     {"txtUserTagLine", u"hello"_s},
                     {"txtUserCredits", u"3"_s},
                     {"txtRatio", u"5"_s},
                     {"txtNumOfLogins_0", u"2"_s},
                     {"txtNumOfLogins_1", u"1"_s},
                     {"txtNumOfLogins_2", u"4"_s},
                     {"txtUserBwUp", u"100"_s},
                     {"txtUserBwDn", u"200"_s}});
    driver.click("cmdOK");
    const CommandSequence sequence = addUserSequence(opened.form);
    EXPECT_EQ(sequence.first.sCommand, "SITE gadduser guests carl secret *@1");
    EXPECT_EQ(sequence.sBatchLines, "site addip carl *@2 x@*\r\n"
                                    "site chgrp carl crew\r\n"
                                    "site change carl credits 3072 0\r\n"
                                    "site change carl ratio 5 0\r\n"
                                    "site change carl tagline hello\r\n"
                                    "site change carl logins 2 ftp\r\n"
                                    "site change carl logins 1 telnet\r\n"
                                    "site change carl logins 4 http\r\n"
                                    "site change carl flags 3\r\n"
                                    "site change carl speedlimit 200 100\r\n");
}

TEST(frmAddUser, NamesOfAnyLengthFitAndGoOutWhole) {
    const std::string name(5000, 'n');
    AddUser opened{{.txtUserName = "carl",
                    .txtPassword = "p",
                    .lstAllGroup = {{name + "1", true}, {name + "2"}, {name + "3", true}}}};
    EXPECT_LT(opened.dialog.minimumSizeHint().width(), 800);
    auto& mainGroup = opened.driver.find<QComboBox>("txtMainGroup");
    EXPECT_NE(mainGroup.itemText(0), mainGroup.itemText(1));
    EXPECT_LT(mainGroup.itemText(0).size(), 200);
    mainGroup.setCurrentIndex(0);
    mainGroup.setCurrentIndex(1);
    opened.driver.find<QAbstractItemView>("lstAllGroup").selectAll();
    mainGroup.setCurrentIndex(0);
    opened.driver.setText("txtUserIP", u"*@1"_s);
    opened.driver.click("cmdOK");
    EXPECT_EQ(opened.form.txtMainGroup, name + "1");
    EXPECT_EQ(opened.form.lstAllGroup,
              (std::vector<SelectableEntry>{{name + "1"}, {name + "2"}, {name + "3", true}}))
        << "the second was the main group as all were selected";
}

TEST(frmAddUser, AMasterIsAddedOnlyAfterAYes) {
    AddUser opened{addUserForm(threeGroups())};
    opened.driver.setText("txtUserFlags", u"3M"_s);
    opened.driver.click("cmdOK");
    QTest::keyClick(opened.dialog.findChild<QMessageBox*>(), Qt::Key_Return);
    EXPECT_EQ(opened.confirmed, 0) << "the default answer is no";
    opened.driver.click("cmdOK");
    EXPECT_EQ(opened.driver.answer(QMessageBox::Yes),
              u"Warning: you are adding a new [M]aster user. Continue?"_s);
    EXPECT_EQ(opened.confirmed, 1);
    EXPECT_FALSE(opened.dialog.isVisible());
}

TEST(frmCopyUser, NamesAreSentWithoutTheirBlanks) {
    Opened<frmCopyUser, CopyUserForm> opened{copyUserForm(bob())};
    opened.driver.setText("txtNewUsername", u" new user "_s);
    opened.driver.press("txtNewUsername", Qt::Key_Return);
    EXPECT_EQ(written({copyUserCommand(opened.form)}), Texts{"107 SITE CorvelExt copyuser 7 newuser"});
}

// bob is a member of staff and crew and an administrator of crew.
TEST(frmChangeUserGroups, ClicksToggleOneEntryEach) {
    ChangeUserGroups opened{changeUserGroupsForm(bob(), threeGroups())};
    for (const int row : {0, 1, 2, 2}) {
        opened.driver.clickRow("lstGroups", row);
    }
    for (const int row : {0, 1, 0}) {
        opened.driver.clickRow("lstGAdmin", row);
    }
    opened.driver.click("cmdOK");
    EXPECT_EQ(written(changeUserGroupsCommands(bob(), opened.form)),
              (Texts{"107 SITE chgrp bob staff guests ", "107 SITE change bob admingroup guests"}));
}

// Two groups that look the same on screen are still two groups, each with its own bytes.
TEST(frmChangeUserGroups, NamesComeBackAsTheServersBytes) {
    const GroupTable groups = ParseGroupTable(1, Lines{"p | 5 | caf\xE9\x07 | 1"}).table;
    ChangeUserGroupsForm form = changeUserGroupsForm(bob(), groups);
    form.sUserName = "[*]";
    ChangeUserGroups opened{form, TextEncoding::windows1252};
    EXPECT_EQ(opened.dialog.windowTitle(), u"Change groups - [*][*]"_s) << "shown as [*]";
    EXPECT_EQ(opened.driver.find<QAbstractItemView>("lstGroups").model()->index(0, 0).data().toString(),
              u"caf\u00E9\u2407"_s);
    opened.driver.clickRow("lstGroups", 0);
    opened.driver.press("lstGroups", Qt::Key_Return);
    EXPECT_EQ(written(changeUserGroupsCommands(bob(), opened.form)),
              (Texts{"107 SITE chgrp bob caf\xE9\x07 "}));
}

TEST(frmUserSections, EachBoxIsOfItsSection) {
    Opened<frmUserSections, SectionsForm> opened{sectionsForm(bob())};
    opened.driver.setTexts({{"txtRatio_3", u"7"_s}, {"txtCredits_9", u"7"_s}});
    opened.driver.press("txtCredits_9", Qt::Key_Return);
    EXPECT_EQ(written(saveSectionsCommands(bob(), opened.form)),
              (Texts{"107 SITE change bob ratio 7 3", "107 SITE change bob credits 7168 9"}));
}

TEST(BatchPanel, ATickSendsItsOwnBoxesAlone) {
    const std::vector<std::pair<const char*, const char*>> ticks = {
        {"chkBatchFlags", "site change bob flags 3\r\n"},
        {"chkBatchLogins", "site change bob logins 2 ftp\r\nsite change bob logins 4 http\r\n"},
        {"chkBatchHomePath", "site change bob homedir /home/%user\r\n"},
        {"chkBatchVFS", "site change bob vfsfile /vfs\r\n"},
        {"chkBatchTagLine", "site change bob tagline hi\r\n"},
        {"chkBatchSpeed", "site change bob speedlimits -1 9\r\n"},
        {"chkBatchCommand", "site change bob credits 45000\r\n"},
    };
    BatchForm performed;
    BatchPanel panel({.perform = [&](const BatchForm& form) { performed = form; },
                      .preview = {},
                      .count = [] { return 2; }});
    Driver driver(panel);
    driver.setTexts({{"txtBatchFlags", u"3"_s},
                     {"txtBatchLogins_0", u"2"_s},
                     {"txtBatchLogins_2", u"4"_s},
                     {"txtBatchHomePath", u"/home/%user"_s},
                     {"txtBatchVFS", u"/vfs"_s},
                     {"txtBatchTagline", u"hi"_s},
                     {"txtBatchSpeedDn", u"-1"_s},
                     {"txtBatchSpeedUp", u"9"_s}});
    for (const auto& [tick, lines] : ticks) {
        driver.press(tick, Qt::Key_Space);
        driver.click("cmdBatchPerform");
        EXPECT_EQ(batchSequence(performed, Lines{"bob"})->sBatchLines, lines);
        driver.press(tick, Qt::Key_Space);
    }
}

} // namespace
} // namespace corvel

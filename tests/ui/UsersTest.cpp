#include "admin/qt/frmAddUser.h"
#include "admin/qt/frmChangeUserGroups.h"
#include "admin/qt/frmCopyUser.h"
#include "admin/qt/frmUserSections.h"
#include "admin/qt/UsersPanel.h"
#include "demo/DemoServer.h"
#include "ui/WindowDriver.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>

#include <gtest/gtest.h>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

constexpr int nameColumn = 1;
constexpr int usersTab = 4;

// The users tab of the window, logged in on the first of two sites of the program's own server.
class Users : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(server_.listen());
        driver_ = std::make_unique<WindowDriver>(siteRecord("home", server_.port(), "demo", "demo") +
                                                 siteRecord("backup", server_.port(), "demo", "demo"));
        driver_->find<QTabWidget>("tabMain").setCurrentIndex(usersTab);
        ASSERT_TRUE(driver_->logIn(1));
    }

    ReportView& list() { return driver_->find<ReportView>("lvwUsers_1"); }
    QString cell(int row, int column) { return list().model()->index(row, column).data().toString(); }
    int rowOf(const QString& name) { return rowWith(list(), nameColumn, name); }
    QLineEdit& box(const char* name) { return driver_->find<QLineEdit>(name); }
    void press(const char* button) { QTest::mouseClick(&driver_->find<QPushButton>(button), Qt::LeftButton); }
    void clickRow(const QString& name) {
        const QModelIndex index = list().model()->index(rowOf(name), nameColumn);
        list().scrollTo(index);
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(index).center());
    }
    bool waitForIdle() {
        return eventually([&] { return driver_->isIdle(1); });
    }
    bool open(const QString& name) {
        clickRow(name);
        return eventually([&] { return driver_->isIdle(1) && box("txtUserName").text() == name; });
    }
    const DemoUser* onServer(const char* name) { return server_.world().accounts.findUser(name); }

    DemoServer server_{DemoOptions{}};
    std::unique_ptr<WindowDriver> driver_;
};

TEST_F(Users, TableIsShownAndEmptiedWithTheConnection) {
    ASSERT_EQ(list().model()->rowCount(), 60);
    EXPECT_EQ(cell(1, 0), u"   2"_s);
    EXPECT_EQ(cell(1, nameColumn), u"alice"_s);
    EXPECT_EQ(cell(1, 3), u"31"_s);
    EXPECT_FALSE(list().model()->index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    ASSERT_TRUE(open(u"alice"_s));
    driver_->chooseSitesMenu(1);
    EXPECT_EQ(list().model()->rowCount(), 0);
    EXPECT_EQ(list().accessibleDescription(), u"Not connected."_s);
    EXPECT_EQ(box("txtUserUID").text(), QString());
}

TEST_F(Users, EveryFieldReachesTheServer) {
    ASSERT_TRUE(open(u"bob"_s));
    const std::array<std::pair<const char*, QString>, 9> fields = {{
        {"txtUserFlags", u"3V"_s},
        {"txtUserTagLine", u"größer  als "_s},
        {"txtUserVFS", u"/etc/vfs/new.vfs"_s},
        {"txtUserHomePath", u"/home/elsewhere"_s},
        {"txtUserBwUp", u"120"_s},
        {"txtUserBwDn", u"340"_s},
        {"txtUserLogins_0", u"7"_s},
        {"txtUserLogins_1", u"5"_s},
        {"txtUserLogins_2", u"3"_s},
    }};
    for (const auto& [name, text] : fields) {
        box(name).setText(text);
    }
    press("cmdUserSaveChanges");
    ASSERT_TRUE(waitForIdle());
    for (const auto& [name, text] : fields) {
        EXPECT_EQ(box(name).text(), text) << name << " as the server has it";
    }
    const DemoUser* bob = onServer("bob");
    ASSERT_NE(bob, nullptr);
    EXPECT_EQ(bob->flags, "3V");
    EXPECT_EQ(bob->upLimit, 120);
    EXPECT_EQ(bob->downLimit, 340);
    EXPECT_EQ(bob->ftpLogins, 7);
    EXPECT_EQ(bob->telnetLogins, 5);
    EXPECT_EQ(bob->httpLogins, 3);

    box("txtUserName").setText(u"robert"_s);
    press("cmdUserSaveChanges");
    ASSERT_TRUE(waitForIdle());
    EXPECT_NE(onServer("robert"), nullptr);
    EXPECT_GE(rowOf(u"robert"_s), 0) << "the row follows the record";
}

TEST_F(Users, AddressesAndThePasswordReachTheServer) {
    ASSERT_TRUE(open(u"alice"_s));
    EXPECT_EQ(box("txtUserIP").text(), u"*@*"_s);
    box("txtUserIP").setText(u"alice@10.9.*"_s);
    press("cmdUserAddDelIp_0");
    ASSERT_TRUE(waitForIdle());
    auto& addresses = driver_->find<QListWidget>("lstUserIP");
    ASSERT_EQ(addresses.count(), 2);
    EXPECT_EQ(box("txtUserIP").text(), u"alice@10.9.*"_s);
    QTest::mouseClick(addresses.viewport(), Qt::LeftButton, {},
                      addresses.visualItemRect(addresses.item(0)).center());
    EXPECT_EQ(box("txtUserIP").text(), addresses.item(0)->text());
    press("cmdUserAddDelIp_1");
    ASSERT_TRUE(waitForIdle());
    EXPECT_EQ(onServer("alice")->masks, std::vector<std::string>{"alice@10.9.*"});
    box("txtUserIP").setText(u"typed"_s);
    addresses.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(box("txtUserIP").text(), u"typed"_s) << "the focus alone picks nothing";
    press("cmdUserResetPWD");
    auto* const password = driver_->waitForBox<QInputDialog>();
    ASSERT_NE(password, nullptr);
    EXPECT_EQ(password->textEchoMode(), QLineEdit::Password);
    EXPECT_EQ(password->windowTitle(), u"Change user password"_s);
    driver_->answerText(u"n€wpass"_s);
    EXPECT_TRUE(eventually([&] { return onServer("alice")->password == "n€wpass"; }));
}

TEST_F(Users, GroupsAndSectionsAreChangedInTheirDialogs) {
    ASSERT_TRUE(open(u"alice"_s));
    const std::vector<int> before = onServer("alice")->groups;
    press("cmdUserEditGroups");
    ASSERT_NE(driver_->waitForBox<frmChangeUserGroups>(), nullptr);
    auto& groups = driver_->find<QListWidget>("lstGroups");
    groups.findItems(u"library"_s, Qt::MatchExactly).front()->setSelected(true);
    press("cmdOK");
    ASSERT_TRUE(eventually([&] { return onServer("alice")->groups.size() == before.size() + 1; }));
    ASSERT_TRUE(waitForIdle());
    auto& shown = driver_->find<ReportView>("lvwUserGroups");
    EXPECT_EQ(shown.model()->rowCount(), static_cast<int>(before.size()) + 1);

    emit driver_->find<ReportView>("lvwUserSections").rowDoubleClicked(0);
    auto* const sections = driver_->waitForBox<frmUserSections>();
    ASSERT_NE(sections, nullptr);
    box("txtCredits_0").setText(u"5"_s);
    press("cmdSave");
    EXPECT_TRUE(eventually([&] { return onServer("alice")->credits[0] == 5 * 1024; }));
    EXPECT_TRUE(waitForIdle());
}

TEST_F(Users, DeletedAccountGoesAfterTheQuestionAndTheNextReload) {
    ASSERT_TRUE(open(u"carol"_s));
    const QPoint carol = list().visualRect(list().currentIndex()).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::ControlModifier, carol);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(driver_->window->findChild<QMessageBox*>(), nullptr) << "no row is selected";
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, carol);
    QTest::keyClick(&list(), Qt::Key_Delete);
    const QString group = cell(rowOf(u"carol"_s), nameColumn + 1);
    auto* const question = driver_->waitForBox<QMessageBox>();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->text(), u"Are u sure u want to delete this user:\ncarol@"_s + group);
    QTest::keyClick(question, Qt::Key_Return);
    ASSERT_TRUE(waitForIdle());
    EXPECT_NE(onServer("carol"), nullptr) << "Enter means no";
    QTest::keyClick(&list(), Qt::Key_Delete);
    driver_->answer(QMessageBox::Yes);
    ASSERT_TRUE(eventually([&] { return onServer("carol") == nullptr && driver_->isIdle(1); }));
    EXPECT_GE(rowOf(u"carol"_s), 0) << "the list waits for a reload";
    press("cmdUserReloadTable");
    ASSERT_TRUE(eventually([&] { return rowOf(u"carol"_s) < 0; }));
    EXPECT_EQ(list().model()->rowCount(), 59);
    EXPECT_EQ(box("txtUserUID").text(), QString());
}

TEST_F(Users, EditorFollowsTheCurrentRowAndTheSite) {
    clickRow(u"alice"_s);
    clickRow(u"bob"_s);
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && box("txtUserName").text() == u"bob"_s; }));
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && box("txtUserName").text() == u"carol"_s; }));

    emit list().headerClicked(nameColumn);
    EXPECT_EQ(cell(0, nameColumn), u"adam"_s);
    EXPECT_GE(list().header()->sectionSize(nameColumn), list().header()->sectionSizeHint(nameColumn))
        << "the arrow cuts the header";
    EXPECT_EQ(cell(list().currentRow(), nameColumn), u"carol"_s);
    press("cmdUserReloadTable");
    ASSERT_TRUE(waitForIdle());
    EXPECT_EQ(cell(0, nameColumn), u"adam"_s);
    EXPECT_EQ(cell(list().currentRow(), nameColumn), u"carol"_s);
    box("txtUserTagLine").setText(u"after the reload"_s);
    press("cmdUserSaveChanges");
    EXPECT_TRUE(eventually([&] { return onServer("carol")->tagline == "after the reload"; }));
    ASSERT_TRUE(waitForIdle());

    ASSERT_TRUE(driver_->logIn(2));
    EXPECT_EQ(box("txtUserUID").text(), QString());
    press("cmdUserSaveChanges");
    press("cmdUserEditGroups");
    EXPECT_EQ(driver_->window->findChild<QDialog*>(), nullptr);
    driver_->find<QAbstractItemView>("lvwSites")
        .setCurrentIndex(driver_->find<QAbstractItemView>("lvwSites").model()->index(0, 0));
    EXPECT_EQ(box("txtUserName").text(), u"carol"_s);
}

TEST_F(Users, AddedAccountIsOnTheServer) {
    QTest::keyClick(&list(), Qt::Key_Insert);
    auto* const dialog = driver_->waitForBox<frmAddUser>();
    ASSERT_NE(dialog, nullptr);
    const auto boxOf = [dialog](const QString& name) { return dialog->findChild<QLineEdit*>(name); };
    auto* const ok = dialog->findChild<QPushButton*>(u"cmdOK"_s);
    boxOf(u"txtUserName"_s)->setText(u"newbie"_s);
    boxOf(u"txtPassword"_s)->setText(u"secret"_s);
    auto* const mainGroup = dialog->findChild<QComboBox*>(u"txtMainGroup"_s);
    mainGroup->setCurrentIndex(mainGroup->findText(u"staff"_s));
    for (const QString& mask : {u"*@10.1.*"_s, u"newbie@10.2.*"_s}) {
        boxOf(u"txtUserIP"_s)->setText(mask);
        QTest::mouseClick(dialog->findChild<QPushButton*>(u"cmdUserAddDelIp_0"_s), Qt::LeftButton);
    }
    auto* const others = dialog->findChild<QListWidget*>(u"lstAllGroup"_s);
    for (const QString& group : {u"music"_s, u"library"_s}) {
        others->findItems(group, Qt::MatchExactly).front()->setSelected(true);
    }
    QTest::mouseClick(ok, Qt::LeftButton);
    ASSERT_TRUE(eventually([&] {
        return driver_->isIdle(1) && driver_->session(1).sBatchLines.left() == 0 &&
               onServer("newbie") != nullptr;
    }));
    EXPECT_EQ(server_.world().accounts.groupNames(*onServer("newbie")),
              (std::vector<std::string>{"staff", "music", "library"}));
    EXPECT_EQ(onServer("newbie")->masks, (std::vector<std::string>{"*@10.1.*", "newbie@10.2.*"}));
    EXPECT_TRUE(eventually([&] { return driver_->window->findChild<QDialog*>() == nullptr; }));
}

TEST_F(Users, CopiedAccountIsInTheReloadedTable) {
    press("cmdUserCopy");
    EXPECT_EQ(driver_->window->findChild<QDialog*>(), nullptr) << "no account is open";
    ASSERT_TRUE(open(u"carol"_s));
    press("cmdUserCopy");
    ASSERT_NE(driver_->waitForBox<frmCopyUser>(), nullptr);
    box("txtNewUsername").setText(u" carol 2 "_s);
    press("cmdOK");
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && rowOf(u"carol2"_s) >= 0; }));
    EXPECT_NE(onServer("carol2"), nullptr);
}

TEST_F(Users, BatchChangesTheSelectedAccounts) {
    press("cmdUserBatch");
    EXPECT_EQ(driver_->find<QPushButton>("cmdUserBatch").text(), u"user..."_s);
    EXPECT_FALSE(driver_->find<QWidget>("picUserContainer").isVisible());
    clickRow(u"alice"_s);
    QTest::keyClick(&list(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&list(), Qt::Key_Down, Qt::ShiftModifier);
    emit list().headerClicked(0);
    emit list().headerClicked(0);
    EXPECT_EQ(cell(list().currentRow(), nameColumn), u"carol"_s);
    driver_->find<QCheckBox>("chkBatchTagLine").setChecked(true);
    box("txtBatchTagline").setText(u"one for all"_s);
    press("cmdBatchPerform");
    ASSERT_TRUE(
        eventually([&] { return driver_->isIdle(1) && onServer("carol")->tagline == "one for all"; }));
    EXPECT_EQ(onServer("alice")->tagline, "one for all");
    EXPECT_EQ(onServer("bob")->tagline, "one for all");
    EXPECT_NE(onServer("dave")->tagline, "one for all");
    press("cmdUserBatch");
    EXPECT_TRUE(driver_->find<QWidget>("picUserContainer").isVisible());
}

TEST_F(Users, ScrollBarSpansWhatIsHidden) {
    auto& container = driver_->find<QWidget>("picUserContainer");
    auto& controls = driver_->find<QWidget>("picUserCtls");
    auto& bar = driver_->find<QScrollBar>("ScrollU");
    driver_->window->resize(1000, 400);
    ASSERT_TRUE(eventually([&] { return bar.isVisible(); }));
    bar.setValue(bar.maximum());
    EXPECT_EQ(controls.y(), container.height() - controls.height());
    bar.setValue(0);
    EXPECT_EQ(controls.y(), 0);
    driver_->find<QPushButton>("cmdUserSaveChanges").setFocus(Qt::TabFocusReason);
    driver_->window->resize(1000, 1400);
    EXPECT_TRUE(eventually([&] { return !bar.isVisible(); }));
    EXPECT_EQ(controls.y(), 0);
}

} // namespace
} // namespace corvel::test

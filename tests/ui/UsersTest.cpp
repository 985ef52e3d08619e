#include "admin/qt/UsersPanel.h"
#include "ui/DemoWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

constexpr int nameColumn = 1;

class Users : public DemoWindow {
  protected:
    void SetUp() override { startOn(usersTab); }

    ReportView& list() { return driver_->find<ReportView>("lvwUsers_1"); }
    QString cell(int row, int column) { return list().model()->index(row, column).data().toString(); }
    int rowOf(const QString& name) { return rowWith(list(), nameColumn, name); }
    void clickRow(const QString& name) { driver_->clickRow("lvwUsers_1", nameColumn, name); }
    bool isOpen(const QString& name) {
        return eventually([&] { return driver_->isIdle(1) && driver_->text("txtUserName") == name; });
    }
    bool open(const QString& name) {
        clickRow(name);
        return isOpen(name);
    }
    void clickAndWait(const char* button) {
        driver_->click(button);
        ASSERT_TRUE(driver_->waitForIdle());
    }
    void pick(const char* listName, const QString& text) {
        driver_->find<QListWidget>(listName).findItems(text, Qt::MatchExactly).front()->setSelected(true);
    }
    const DemoUser* onServer(const char* name) { return server_.world().accounts.findUser(name); }
};

TEST_F(Users, EveryFieldReachesTheServer) {
    ASSERT_TRUE(open(u"bob"_s));
    // The limits and logins first: behind a rename they would name the account as it was.
    const std::vector<std::vector<std::pair<const char*, QString>>> saves = {
        {{"txtUserBwUp", u"120"_s},
         {"txtUserBwDn", u"340"_s},
         {"txtUserLogins_0", u"7"_s},
         {"txtUserLogins_1", u"5"_s},
         {"txtUserLogins_2", u"3"_s}},
        {{"txtUserName", u"robert"_s},
         {"txtUserFlags", u"3V"_s},
         {"txtUserTagLine", u"größer  als "_s},
         {"txtUserVFS", u"/etc/vfs/new.vfs"_s},
         {"txtUserHomePath", u"/home/elsewhere"_s}}};
    for (const auto& boxes : saves) {
        for (const auto& [name, text] : boxes) {
            driver_->setText(name, text);
        }
        clickAndWait("cmdUserSaveChanges");
        for (const auto& [name, text] : boxes) {
            EXPECT_EQ(driver_->text(name), text) << name << " as the server has it";
        }
    }
    const DemoUser* const robert = onServer("robert");
    ASSERT_NE(robert, nullptr);
    EXPECT_EQ((std::vector<int>{robert->upLimit, robert->downLimit, robert->ftpLogins, robert->telnetLogins,
                                robert->httpLogins}),
              (std::vector<int>{120, 340, 7, 5, 3}));
    EXPECT_GE(rowOf(u"robert"_s), 0) << "the row follows the record";
}

TEST_F(Users, AddressesPasswordGroupsAndSectionsReachTheServer) {
    ASSERT_TRUE(open(u"alice"_s));
    driver_->setText("txtUserIP", u"alice@10.9.*"_s);
    clickAndWait("cmdUserAddDelIp_0");
    auto& addresses = driver_->find<QListWidget>("lstUserIP");
    ASSERT_EQ(addresses.count(), 2);
    QTest::mouseClick(addresses.viewport(), Qt::LeftButton, {},
                      addresses.visualItemRect(addresses.item(0)).center());
    clickAndWait("cmdUserAddDelIp_1");
    EXPECT_EQ(onServer("alice")->masks, std::vector<std::string>{"alice@10.9.*"});
    driver_->setText("txtUserIP", u"typed"_s);
    addresses.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(driver_->text("txtUserIP"), u"typed"_s) << "the focus alone picks nothing";

    driver_->click("cmdUserResetPWD");
    auto* const password = driver_->waitForBox<QInputDialog>();
    ASSERT_NE(password, nullptr);
    EXPECT_EQ(password->textEchoMode(), QLineEdit::Password);
    driver_->answerText(u"n€wpass"_s);
    EXPECT_TRUE(eventually([&] { return onServer("alice")->password == "n€wpass"; }));

    const std::size_t groups = onServer("alice")->groups.size();
    driver_->click("cmdUserEditGroups");
    ASSERT_NE(driver_->waitForBox<QDialog>(), nullptr);
    pick("lstGroups", u"library"_s);
    driver_->click("cmdOK");
    ASSERT_TRUE(eventually([&] { return onServer("alice")->groups.size() == groups + 1; }));
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_EQ(driver_->find<ReportView>("lvwUserGroups").model()->rowCount(), static_cast<int>(groups) + 1);

    emit driver_->find<ReportView>("lvwUserSections").rowDoubleClicked(0);
    ASSERT_NE(driver_->waitForBox<QDialog>(), nullptr);
    driver_->setText("txtCredits_0", u"5"_s);
    driver_->click("cmdSave");
    EXPECT_TRUE(eventually([&] { return onServer("alice")->credits[0] == 5 * 1024; }));
    EXPECT_TRUE(driver_->waitForIdle());
}

TEST_F(Users, DeletedAccountGoesAfterTheQuestionAndTheNextReload) {
    ASSERT_TRUE(open(u"carol"_s));
    const QPoint carol = list().visualRect(list().currentIndex()).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::ControlModifier, carol);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(driver_->window->findChild<QMessageBox*>(), nullptr) << "no row is selected";
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, carol);
    QTest::keyClick(&list(), Qt::Key_Delete);
    auto* const question = driver_->waitForBox<QMessageBox>();
    ASSERT_NE(question, nullptr);
    QTest::keyClick(question, Qt::Key_Return);
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_NE(onServer("carol"), nullptr) << "Enter means no";
    QTest::keyClick(&list(), Qt::Key_Delete);
    driver_->answer(QMessageBox::Yes);
    ASSERT_TRUE(eventually([&] { return onServer("carol") == nullptr && driver_->isIdle(1); }));
    EXPECT_GE(rowOf(u"carol"_s), 0) << "the list waits for a reload";
    driver_->click("cmdUserReloadTable");
    ASSERT_TRUE(eventually([&] { return rowOf(u"carol"_s) < 0; }));
    EXPECT_EQ(driver_->text("txtUserUID"), QString());
}

TEST_F(Users, EditorFollowsTheCurrentRowUntilTheConnectionEnds) {
    ASSERT_EQ(list().model()->rowCount(), 60);
    EXPECT_EQ(cell(1, 0) + cell(1, nameColumn) + cell(1, 3), u"   2alice31"_s);
    EXPECT_FALSE(list().model()->index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    clickRow(u"alice"_s);
    clickRow(u"bob"_s);
    EXPECT_TRUE(isOpen(u"bob"_s));
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_TRUE(isOpen(u"carol"_s));
    emit list().headerClicked(nameColumn);
    EXPECT_GE(list().header()->sectionSize(nameColumn), list().header()->sectionSizeHint(nameColumn))
        << "the arrow cuts the header";
    clickAndWait("cmdUserReloadTable");
    EXPECT_EQ(cell(0, nameColumn), u"adam"_s);
    EXPECT_EQ(cell(list().currentRow(), nameColumn), u"carol"_s);
    driver_->chooseSitesMenu(1);
    EXPECT_EQ(list().model()->rowCount(), 0);
    EXPECT_EQ(driver_->text("txtUserUID"), QString());
}

// A rename is told of when the connection, and with it the table, has gone already.
TEST_F(Users, AChangeThatATableHasOvertakenHarmsNothing) {
    driver_->window->program().disconnectSite(1);
    driver_->window->findChild<UsersPanel*>()->accountsChanged(1, Accounts::users, AccountChange::record);
    EXPECT_EQ(list().model()->rowCount(), 0);
}

TEST_F(Users, WhatIsTypedStaysWithItsAccount) {
    ASSERT_TRUE(open(u"bob"_s));
    driver_->setText("txtUserTagLine", u"half a sent"_s);
    const auto ground = [&](int row) { return list().model()->index(row, 0).data(Qt::BackgroundRole); };
    EXPECT_TRUE(ground(rowOf(u"bob"_s)).isValid());
    EXPECT_FALSE(ground(rowOf(u"alice"_s)).isValid());
    clickAndWait("cmdUserAddDelIp_0");
    ASSERT_TRUE(open(u"alice"_s));
    EXPECT_NE(driver_->text("txtUserTagLine"), u"half a sent"_s);
    QTest::keyClick(&list(), Qt::Key_F5);
    ASSERT_TRUE(driver_->waitForIdle());
    ASSERT_TRUE(open(u"bob"_s));
    EXPECT_EQ(driver_->text("txtUserTagLine"), u"half a sent"_s);
    driver_->click("cmdReloadUserfile");
    driver_->answer(QMessageBox::Yes);
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_NE(driver_->text("txtUserTagLine"), u"half a sent"_s);
    EXPECT_FALSE(ground(rowOf(u"bob"_s)).isValid());
}

TEST_F(Users, AddedAndCopiedAccountsAreOnTheServer) {
    driver_->click("cmdUserCopy");
    EXPECT_EQ(driver_->window->findChild<QDialog*>(), nullptr) << "no account is open";
    QTest::keyClick(&list(), Qt::Key_Insert);
    auto* const dialog = driver_->waitForBox<QDialog>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>(u"txtUserName"_s)->setText(u"newbie"_s);
    driver_->setText("txtPassword", u"secret"_s);
    driver_->find<QComboBox>("txtMainGroup").setCurrentText(u"staff"_s);
    dialog->findChild<QPushButton*>(u"cmdUserAddDelIp_0"_s)->click();
    pick("lstAllGroup", u"music"_s);
    driver_->click("cmdOK");
    ASSERT_TRUE(eventually([&] {
        return driver_->isIdle(1) && driver_->session(1).sBatchLines.left() == 0 &&
               onServer("newbie") != nullptr;
    }));
    EXPECT_EQ(server_.world().accounts.groupNames(*onServer("newbie")),
              (std::vector<std::string>{"staff", "music"}));
    EXPECT_EQ(onServer("newbie")->masks, std::vector<std::string>{"*@*"});
    EXPECT_TRUE(driver_->waitForNoDialog());

    ASSERT_TRUE(open(u"carol"_s));
    driver_->click("cmdUserCopy");
    ASSERT_NE(driver_->waitForBox<QDialog>(), nullptr);
    driver_->setText("txtNewUsername", u" carol 2 "_s);
    driver_->click("cmdOK");
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && rowOf(u"carol2"_s) >= 0; }));
    EXPECT_NE(onServer("carol2"), nullptr);
}

TEST_F(Users, BatchChangesTheSelectedAccountsInWhicheverRowsTheyStand) {
    driver_->click("cmdUserBatch");
    EXPECT_EQ(driver_->find<QPushButton>("cmdUserBatch").text(), u"user..."_s);
    EXPECT_FALSE(driver_->find<QWidget>("picUserContainer").isVisible());
    clickRow(u"alice"_s);
    QTest::keyClick(&list(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&list(), Qt::Key_Down, Qt::ShiftModifier);
    emit list().headerClicked(0);
    emit list().headerClicked(0);
    EXPECT_EQ(cell(list().currentRow(), nameColumn), u"carol"_s);
    driver_->find<QCheckBox>("chkBatchTagLine").setChecked(true);
    driver_->setText("txtBatchTagline", u"one for all"_s);
    driver_->click("cmdBatchPerform");
    const auto isChanged = [&](const char* name) { return onServer(name)->tagline == "one for all"; };
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && isChanged("carol"); }));
    EXPECT_TRUE(isChanged("alice") && isChanged("bob") && !isChanged("dave"));
    driver_->click("cmdUserBatch");
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
    driver_->window->resize(1000, 1400);
    EXPECT_TRUE(eventually([&] { return !bar.isVisible(); }));
    EXPECT_EQ(controls.y(), 0);
}

} // namespace
} // namespace corvel::test

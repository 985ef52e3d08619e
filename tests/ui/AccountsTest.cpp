#include "admin/qt/UsersPanel.h"
#include "ui/WindowDriver.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

constexpr int nameColumn = 1;
using Boxes = std::vector<std::pair<const char*, QString>>;

// One of the tabs of accounts over the demo server.
class Accounts : public DemoWindow {
  protected:
    Accounts(Tab tab, const char* listName, const char* nameBox)
        : tab_(tab), listName_(listName), nameBox_(nameBox) {}
    void SetUp() override { startOn(tab_); }

    ReportView& list() { return driver_->find<ReportView>(listName_); }
    QString cell(int row, int column) { return list().model()->index(row, column).data().toString(); }
    int rowOf(const QString& name) { return rowWith(list(), nameColumn, name); }
    bool waitForRow(const QString& name) {
        return eventually([&] { return driver_->isIdle(1) && rowOf(name) >= 0; });
    }
    bool isOpen(const QString& name) {
        return eventually([&] { return driver_->isIdle(1) && driver_->text(nameBox_) == name; });
    }
    bool open(const QString& name) {
        driver_->clickRow(listName_, nameColumn, name);
        return isOpen(name);
    }
    void clickAndWait(const char* button) {
        driver_->click(button);
        ASSERT_TRUE(driver_->waitForIdle());
    }
    // Types, saves, and expects that the server has it so.
    void save(const Boxes& boxes, const char* button) {
        driver_->setTexts(boxes);
        clickAndWait(button);
        for (const auto& [name, text] : boxes) {
            EXPECT_EQ(driver_->text(name), text) << name;
        }
    }

  private:
    Tab tab_;
    const char* listName_;
    const char* nameBox_;
};

class Users : public Accounts {
  protected:
    Users() : Accounts(usersTab, "lvwUsers_1", "txtUserName") {}
    void pick(const char* listName, const QString& text) {
        auto& list = driver_->find<QAbstractItemView>(listName);
        const QModelIndexList found = list.model()->match(list.model()->index(0, 0), Qt::DisplayRole, text);
        list.selectionModel()->select(found.front(), QItemSelectionModel::Select);
    }
    const DemoUser* onServer(const char* name) { return server_.world().accounts.findUser(name); }
};

TEST_F(Users, EveryFieldReachesTheServer) {
    ASSERT_TRUE(open(u"bob"_s));
    // The limits and logins first: behind a rename they would name the account as it was.
    save({{"txtUserBwUp", u"120"_s},
          {"txtUserBwDn", u"340"_s},
          {"txtUserLogins_0", u"7"_s},
          {"txtUserLogins_1", u"5"_s},
          {"txtUserLogins_2", u"3"_s}},
         "cmdUserSaveChanges");
    save({{"txtUserName", u"robert"_s},
          {"txtUserFlags", u"3V"_s},
          {"txtUserTagLine", u"größer  als "_s},
          {"txtUserVFS", u"/etc/vfs/new.vfs"_s},
          {"txtUserHomePath", u"/home/elsewhere"_s}},
         "cmdUserSaveChanges");
    EXPECT_NE(onServer("robert"), nullptr);
    EXPECT_GE(rowOf(u"robert"_s), 0) << "the row follows the record";
}

TEST_F(Users, AddressesPasswordGroupsAndSectionsReachTheServer) {
    ASSERT_TRUE(open(u"alice"_s));
    driver_->setText("txtUserIP", u"alice@10.9.*"_s);
    clickAndWait("cmdUserAddDelIp_0");
    driver_->Driver::clickRow("lstUserIP", 0);
    clickAndWait("cmdUserAddDelIp_1");
    EXPECT_EQ(onServer("alice")->masks, std::vector<std::string>{"alice@10.9.*"});

    driver_->click("cmdUserResetPWD");
    driver_->answerText(u"n€wpass"_s);
    EXPECT_TRUE(eventually([&] { return onServer("alice")->password == "n€wpass"; }));

    const std::size_t groups = onServer("alice")->groups.size();
    driver_->click("cmdUserEditGroups");
    ASSERT_NE(driver_->waitForBox<QDialog>(), nullptr);
    pick("lstGroups", u"library"_s);
    clickAndWait("cmdOK");
    EXPECT_EQ(driver_->find<ReportView>("lvwUserGroups").model()->rowCount(), static_cast<int>(groups) + 1);

    emit driver_->find<ReportView>("lvwUserSections").rowDoubleClicked(0);
    ASSERT_NE(driver_->waitForBox<QDialog>(), nullptr);
    driver_->setText("txtCredits_0", u"5"_s);
    clickAndWait("cmdSave");
    EXPECT_EQ(onServer("alice")->credits[0], 5 * 1024);
}

TEST_F(Users, EditorFollowsTheCurrentRowUntilTheConnectionEnds) {
    driver_->clickRow("lvwUsers_1", nameColumn, u"alice"_s);
    EXPECT_TRUE(open(u"bob"_s)) << "though the details of another were asked for";
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_TRUE(isOpen(u"carol"_s));
    emit list().headerClicked(nameColumn);
    clickAndWait("cmdUserReloadTable");
    EXPECT_EQ(cell(0, nameColumn), u"adam"_s);
    EXPECT_EQ(cell(list().currentRow(), nameColumn), u"carol"_s);
    // A change is told of when the connection, and with it the table, has gone already.
    driver_->window->program().disconnectSite(1);
    driver_->window->findChild<UsersPanel*>()->accountsChanged(1, corvel::Accounts::users,
                                                               AccountChange::record);
    EXPECT_EQ(list().model()->rowCount(), 0);
    EXPECT_EQ(driver_->text("txtUserUID"), QString());
}

TEST_F(Users, AreFoundByAFilter) {
    ASSERT_TRUE(open(u"bob"_s));
    const int all = list().rowsInAll();
    QTest::keyClick(driver_->window.get(), Qt::Key_F, Qt::ControlModifier);
    auto& filter = driver_->find<QLineEdit>("txtUsersFilter");
    QTest::keyClicks(QApplication::focusWidget(), u"ALIC"_s);
    EXPECT_EQ(filter.text(), u"ALIC"_s);
    EXPECT_EQ(driver_->find<QLabel>("lblUsersCount").text(), u"1 of %1"_s.arg(all));
    EXPECT_EQ(driver_->text("txtUserName"), u"bob"_s) << "nobody was picked";
    clickAndWait("cmdUserReloadTable");
    emit list().headerClicked(nameColumn);
    EXPECT_EQ(list().rowsShown(), 1);
    list().selectAll();
    EXPECT_EQ(list().selectedRows().size(), 1U);
    QTest::keyClick(&filter, Qt::Key_Down);
    EXPECT_TRUE(isOpen(u"alice"_s));
    driver_->window->program().selectSite(2);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    EXPECT_EQ(filter.text(), QString());
    driver_->window->program().selectSite(1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    EXPECT_EQ(filter.text(), u"ALIC"_s);
    QTest::keyClick(&filter, Qt::Key_Escape);
    EXPECT_EQ(list().rowsShown(), all);
    EXPECT_EQ(cell(list().currentRow(), nameColumn), u"alice"_s);
}

TEST_F(Users, WhatIsTypedStaysWithItsAccount) {
    ASSERT_TRUE(open(u"bob"_s));
    driver_->setText("txtUserTagLine", u"half a sent"_s);
    clickAndWait("cmdUserAddDelIp_0");
    ASSERT_TRUE(open(u"alice"_s));
    EXPECT_NE(driver_->text("txtUserTagLine"), u"half a sent"_s);
    ASSERT_TRUE(open(u"bob"_s));
    EXPECT_EQ(driver_->text("txtUserTagLine"), u"half a sent"_s);
    driver_->click("cmdReloadUserfile");
    driver_->answer(QMessageBox::Yes);
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_NE(driver_->text("txtUserTagLine"), u"half a sent"_s);
}

TEST_F(Users, AddedAndCopiedAccountsAreOnTheServer) {
    QTest::keyClick(&list(), Qt::Key_Insert);
    auto* const dialog = driver_->waitForBox<QDialog>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>(u"txtUserName"_s)->setText(u"newbie"_s);
    driver_->setText("txtPassword", u"secret"_s);
    driver_->find<QComboBox>("txtMainGroup").setCurrentText(u"staff"_s);
    dialog->findChild<QLineEdit*>(u"txtUserIP"_s)
        ->setText(u"newbie@10.*"_s); // typed, and not put into the list
    pick("lstAllGroup", u"music"_s);
    driver_->chooseSitesMenu(1);
    driver_->click("cmdOK");
    EXPECT_EQ(driver_->answer(QMessageBox::Ok), u"Command not sent: the site is not connected"_s);
    ASSERT_TRUE(driver_->logIn(1));
    driver_->click("cmdOK");
    ASSERT_TRUE(eventually([&] {
        return onServer("newbie") != nullptr &&
               onServer("newbie")->masks == std::vector<std::string>{"newbie@10.*"};
    }));
    EXPECT_TRUE(driver_->waitForNoDialog());

    auto& added = driver_->find<QPushButton>("cmdUserAdded");
    ASSERT_TRUE(eventually([&] { return added.isVisible(); }));
    EXPECT_EQ(added.text(), u"newbie added - reload"_s);
    added.click();
    EXPECT_TRUE(waitForRow(u"newbie"_s));
    EXPECT_TRUE(eventually([&] { return !added.isVisible(); }));

    ASSERT_TRUE(open(u"carol"_s));
    driver_->click("cmdUserCopy");
    ASSERT_NE(driver_->waitForBox<QDialog>(), nullptr);
    driver_->setText("txtNewUsername", u"carol2"_s);
    driver_->click("cmdOK");
    EXPECT_TRUE(waitForRow(u"carol2"_s));
    EXPECT_NE(onServer("carol2"), nullptr);
}

TEST_F(Users, BatchChangesTheSelectedAccountsInWhicheverRowsTheyStand) {
    driver_->click("cmdUserBatch");
    ASSERT_TRUE(open(u"alice"_s));
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
}

TEST_F(Users, SeveralAreDeletedAndOneIsSavedByKey) {
    ASSERT_TRUE(open(u"bob"_s));
    driver_->setText("txtUserTagLine", u"by key"_s);
    QTest::keyClick(driver_->window->focusWidget(), Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_EQ(onServer("bob")->tagline, "by key");
    QTest::keyClick(&list(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(driver_->find<QLabel>("lblUserCurrent").text(), u"carol (2 users are selected)"_s);
    driver_->click("cmdUserDelete");
    EXPECT_TRUE(driver_->answer(QMessageBox::Yes).endsWith(u"these 2 users:\nbob@friends\ncarol@archive"_s));
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_FALSE(onServer("bob") != nullptr || onServer("carol") != nullptr);
}

TEST_F(Users, BatchIsPlannedShownAndLookedAtAfterwards) {
    driver_->click("cmdUserBatch");
    ASSERT_TRUE(open(u"alice"_s));
    QTest::keyClick(&list(), Qt::Key_Down, Qt::ShiftModifier);
    driver_->find<QCheckBox>("chkBatchTagLine").setChecked(true);
    driver_->find<QCheckBox>("chkBatchFlags").setChecked(true);
    driver_->setTexts({{"txtBatchFlags", u"?"_s}, {"txtBatchTagline", u"hi"_s}}); // the first is refused
    EXPECT_EQ(driver_->find<QLabel>("lblBatchPlan").text(), u"2 users, 4 commands"_s);
    driver_->click("cmdBatchPreview");
    ASSERT_NE(driver_->waitForBox<QDialog>(), nullptr);
    const auto rowText = [&](const char* name, int row) {
        const QAbstractItemModel& model = *driver_->find<ReportView>(name).model();
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column) {
            cells.append(model.index(row, column).data().toString());
        }
        return cells.join(u'|');
    };
    EXPECT_EQ(rowText("lvwBatchPreview", 2), u"bob|site change bob flags ?"_s);
    driver_->waitForBox<QDialog>()->reject();
    ASSERT_TRUE(driver_->waitForNoDialog());

    driver_->click("cmdBatchPerform");
    ASSERT_TRUE(driver_->waitForIdle());
    auto& results = driver_->find<ReportView>("lvwBatchResults");
    ASSERT_TRUE(eventually(
        [&] { return results.model()->rowCount() == 4 && !driver_->find<QWidget>("prgBatch").isVisible(); }));
    EXPECT_EQ(rowText("lvwBatchResults", 1),
              u"alice|site change alice tagline hi|200|200 Changed tagline of 'alice'."_s);
    driver_->find<QCheckBox>("chkBatchRefusedOnly").setChecked(true);
    EXPECT_EQ(results.model()->rowCount(), 2);
    driver_->click("cmdBatchCopy");
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(
        u"user\tcommand\tcode\treply\nalice\tsite change alice flags ?\t5"_s));
    ASSERT_TRUE(open(u"carol"_s));
    driver_->setText("txtUsersFilter", u"carol"_s);
    driver_->click("cmdBatchSelectRefused");
    EXPECT_EQ(list().selectedRows(), (std::vector<int>{rowOf(u"alice"_s), rowOf(u"bob"_s)}));

    driver_->window->program().selectSite(2);
    EXPECT_EQ(driver_->find<QLabel>("lblBatchPlan").text(), u"0 users, 0 commands"_s);
    driver_->window->program().selectSite(1);
    EXPECT_EQ(driver_->text("txtBatchFlags"), u"?"_s);
}

TEST_F(Users, ABatchThatRunsIsAskedAboutAndCanBeStopped) {
    driver_->click("cmdUserBatch");
    ASSERT_TRUE(open(u"alice"_s));
    list().selectAll();
    driver_->find<QCheckBox>("chkBatchTagLine").setChecked(true);
    driver_->click("cmdBatchPerform");
    driver_->close();
    EXPECT_TRUE(driver_->answer(QMessageBox::No).startsWith(u"A batch is running."_s));
    EXPECT_TRUE(driver_->window->isVisible());
    driver_->find<QPushButton>("cmdBatchStop").click();
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_NE(driver_->session(1).commandResultsLog.text().find(" stopped after "), std::string::npos);
    driver_->close();
    EXPECT_FALSE(driver_->window->isVisible());
}

class Groups : public Accounts {
  protected:
    Groups() : Accounts(groupsTab, "lvwGroups_1", "txtGroupname") {}
};

TEST_F(Groups, AreAddedEditedAndDeletedOnTheServer) {
    driver_->click("cmdGroupAdd");
    auto* const dialog = driver_->waitForBox<QDialog>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>(u"txtGroupname"_s)->setText(u"newcomers"_s);
    driver_->click("cmdOK");
    ASSERT_TRUE(waitForRow(u"newcomers"_s));
    ASSERT_TRUE(open(u"newcomers"_s));
    save({{"txtGroupname", u"regulars"_s},
          {"txtGroupdescr", u"die Größten"_s},
          {"txtGroupGroupslots", u"12"_s},
          {"txtGroupLeechslots", u"7"_s},
          {"txtGroupVFS", u"/etc/new.vfs"_s}},
         "cmdGroupSaveChanges");
    ASSERT_TRUE(waitForRow(u"regulars"_s));
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(driver_->answer(QMessageBox::Yes),
              u"Are u sure u want to delete this group:\nregulars\n\n"
              "Note: make sure the group has no members, otherwise it can not be deleted"_s);
    ASSERT_TRUE(driver_->waitForIdle());
    driver_->click("cmdGroupsReloadTable");
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && rowOf(u"regulars"_s) < 0; }));
}

TEST_F(Groups, ADoubleClickOnAMemberGoesToTheUser) {
    ASSERT_TRUE(open(u"friends"_s));
    auto& members = driver_->find<ReportView>("lvwGroupMembers");
    const QString name = members.model()->index(1, nameColumn).data().toString();
    emit members.rowDoubleClicked(1);
    EXPECT_EQ(driver_->find<QTabWidget>("tabMain").currentIndex(), usersTab);
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && driver_->text("txtUserName") == name; }));
    auto& users = driver_->find<ReportView>("lvwUsers_1");
    EXPECT_EQ(users.currentRow(), rowWith(users, nameColumn, name));
}

TEST(AccountServers, ThatRefuseAreExplainedAndGetNothingElse) {
    DemoServer server{DemoOptions{}};
    ASSERT_TRUE(server.listen());
    WindowDriver driver(siteRecord("home", server.port(), "bob", "bob")); // who is no master
    driver.showTab(usersTab);
    ASSERT_TRUE(driver.logIn(1));
    auto& list = driver.find<ReportView>("lvwUsers_1");
    EXPECT_TRUE(
        list.accessibleDescription().startsWith(u"The server did not send its users:\n550 Access denied"_s))
        << list.accessibleDescription().toStdString();
    for (const char* const button : {"cmdUserSaveChanges", "cmdReloadUserfile", "cmdUserResetPWD",
                                     "cmdUserAddDelIp_0", "cmdUserEditGroups", "cmdUserCopy", "cmdUserBatch",
                                     "cmdBatchPerform", "cmdGroupSaveChanges", "cmdReloadGroupfile"}) {
        driver.find<QPushButton>(button).click();
    }
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_TRUE(driver.isIdle(1)) << "nothing goes out";
    EXPECT_EQ(driver.window->findChild<QDialog*>(), nullptr);
}

} // namespace
} // namespace corvel::test

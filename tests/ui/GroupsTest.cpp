#include "ui/DemoWindow.h"

#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

constexpr int nameColumn = 1;

class Groups : public DemoWindow {
  protected:
    void SetUp() override { startOn(groupsTab); }

    ReportView& list() { return driver_->find<ReportView>("lvwGroups_1"); }
    int rowOf(const QString& name) { return rowWith(list(), nameColumn, name); }
    bool waitForRow(const QString& name) {
        return eventually([&] { return driver_->isIdle(1) && rowOf(name) >= 0; });
    }
    void open(const QString& name) {
        driver_->clickRow("lvwGroups_1", nameColumn, name);
        ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && driver_->text("txtGroupname") == name; }));
    }
};

TEST_F(Groups, AreAddedEditedAndDeletedOnTheServer) {
    driver_->click("cmdGroupAdd");
    auto* const dialog = driver_->waitForBox<QDialog>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>(u"txtGroupname"_s)->setText(u"newcomers"_s);
    driver_->click("cmdOK");
    ASSERT_TRUE(waitForRow(u"newcomers"_s));
    EXPECT_TRUE(eventually([&] {
        return driver_->find<QPlainTextEdit>("txtCmdResults_1")
            .toPlainText()
            .contains(u"-------------[ END ]-[ ADDGROUP ]-------------"_s);
    }));

    open(u"newcomers"_s);
    const std::vector<std::pair<const char*, QString>> fields = {{"txtGroupname", u"regulars"_s},
                                                                 {"txtGroupdescr", u"die Größten"_s},
                                                                 {"txtGroupGroupslots", u"12"_s},
                                                                 {"txtGroupLeechslots", u"7"_s},
                                                                 {"txtGroupVFS", u"/etc/new.vfs"_s}};
    for (const auto& [name, text] : fields) {
        driver_->setText(name, text);
    }
    driver_->click("cmdGroupSaveChanges");
    ASSERT_TRUE(waitForRow(u"regulars"_s));
    for (const auto& [name, text] : fields) {
        EXPECT_EQ(driver_->text(name), text) << name << " as the server has it";
    }
    const DemoGroup* const regulars = server_.world().accounts.findGroup("regulars");
    EXPECT_EQ((std::vector<int>{regulars->groupSlots, regulars->leechSlots}), (std::vector<int>{12, 7}));

    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(driver_->answer(QMessageBox::Yes),
              u"Are u sure u want to delete this group:\nregulars\n\n"
              "Note: make sure the group has no members, otherwise it can not be deleted"_s);
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_GE(rowOf(u"regulars"_s), 0) << "the list waits for the server";
    driver_->click("cmdGroupsReloadTable");
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && rowOf(u"regulars"_s) < 0; }));
}

TEST_F(Groups, NameTheirMembersAsTheUserTableDoes) {
    open(u"friends"_s);
    auto& members = driver_->find<ReportView>("lvwGroupMembers");
    const auto member = [&](int column) { return members.model()->index(0, column).data().toString(); };
    EXPECT_EQ(driver_->find<QLabel>("lblGroupMembers").text(), QString::number(members.model()->rowCount()));
    EXPECT_EQ(member(0) + member(1) + member(2), u"3bobYes"_s);
    driver_->setText("txtGroupVFS", u"/typed"_s);
    AdminActions& admin = driver_->window->program().admin();
    admin.users().change(1, 3, {{"SITE renuser bob robert"}});
    admin.users().reload(1);
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && member(1) == u"robert"_s; }));
    EXPECT_EQ(driver_->text("txtGroupVFS"), u"/typed"_s);

    ASSERT_TRUE(driver_->logIn(2));
    EXPECT_EQ(driver_->text("txtGroupname"), QString());
    admin.groups().reload(1);
    ASSERT_TRUE(driver_->waitForIdle(1));
    driver_->window->program().selectSite(1);
    EXPECT_EQ(driver_->text("txtGroupname"), u"friends"_s) << "though its table is a new one";
}

} // namespace
} // namespace corvel::test

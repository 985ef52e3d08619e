#include "ui/DemoWindow.h"

#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>

#include <array>
#include <utility>

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

TEST_F(Groups, AreEditedOnTheServer) {
    ASSERT_EQ(list().model()->rowCount(), 8);
    open(u"staff"_s);
    const std::array<std::pair<const char*, QString>, 4> fields = {{
        {"txtGroupdescr", u"die Größten"_s},
        {"txtGroupGroupslots", u"12"_s},
        {"txtGroupLeechslots", u"7"_s},
        {"txtGroupVFS", u"/etc/new.vfs"_s},
    }};
    for (const auto& [name, text] : fields) {
        driver_->setText(name, text);
    }
    driver_->click("cmdGroupSaveChanges");
    ASSERT_TRUE(driver_->waitForIdle());
    for (const auto& [name, text] : fields) {
        EXPECT_EQ(driver_->text(name), text) << name << " as the server has it";
    }
    const DemoGroup* staff = server_.world().accounts.findGroup("staff");
    EXPECT_EQ(staff->groupSlots, 12);
    EXPECT_EQ(staff->leechSlots, 7);
    EXPECT_EQ(staff->vfsFile, "/etc/new.vfs");
}

TEST_F(Groups, NameTheirMembersAsTheUserTableDoes) {
    open(u"friends"_s);
    auto& members = driver_->find<ReportView>("lvwGroupMembers");
    const auto member = [&](int column) { return members.model()->index(0, column).data().toString(); };
    EXPECT_EQ(driver_->find<QLabel>("lblGroupMembers").text(), QString::number(members.model()->rowCount()));
    EXPECT_EQ(member(0), u"3"_s);
    EXPECT_EQ(member(1), u"bob"_s);
    EXPECT_EQ(member(2), u"Yes"_s);
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

TEST_F(Groups, AreAddedRenamedAndDeleted) {
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
    driver_->setText("txtGroupname", u"regulars"_s);
    driver_->click("cmdGroupSaveChanges");
    ASSERT_TRUE(waitForRow(u"regulars"_s));

    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(driver_->answer(QMessageBox::Yes),
              u"Are u sure u want to delete this group:\nregulars\n\n"
              "Note: make sure the group has no members, otherwise it can not be deleted"_s);
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_GE(rowOf(u"regulars"_s), 0) << "the list waits for the server";
    driver_->click("cmdGroupsReloadTable");
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && rowOf(u"regulars"_s) < 0; }));
}

} // namespace
} // namespace corvel::test

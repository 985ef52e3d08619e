#include "admin/qt/frmAddGroup.h"
#include "demo/DemoServer.h"
#include "ui/WindowDriver.h"

#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

#include <gtest/gtest.h>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

constexpr int groupsTab = 5;
constexpr int nameColumn = 1;

// The groups tab of the window, logged in on the program's own server.
class Groups : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(server_.listen());
        driver_ = std::make_unique<WindowDriver>(siteRecord("home", server_.port(), "demo", "demo"));
        driver_->find<QTabWidget>("tabMain").setCurrentIndex(groupsTab);
        ASSERT_TRUE(driver_->logIn(1));
    }

    ReportView& list() { return driver_->find<ReportView>("lvwGroups_1"); }

    int rowOf(const QString& name) { return rowWith(list(), nameColumn, name); }

    QLineEdit& box(const char* name) { return driver_->find<QLineEdit>(name); }
    void press(const char* button) { QTest::mouseClick(&driver_->find<QPushButton>(button), Qt::LeftButton); }

    void reload() {
        ASSERT_TRUE(eventually([&] { return driver_->isIdle(1); }));
        press("cmdGroupsReloadTable");
        ASSERT_TRUE(eventually([&] { return driver_->isIdle(1); }));
    }

    void open(const QString& name) {
        const QModelIndex index = list().model()->index(rowOf(name), nameColumn);
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(index).center());
        ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && box("txtGroupname").text() == name; }));
    }

    DemoServer server_{DemoOptions{}};
    std::unique_ptr<WindowDriver> driver_;
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
        box(name).setText(text);
    }
    press("cmdGroupSaveChanges");
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1); }));
    for (const auto& [name, text] : fields) {
        EXPECT_EQ(box(name).text(), text) << name << " as the server has it";
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
    box("txtGroupVFS").setText(u"/typed"_s);
    AdminActions& admin = driver_->window->program().admin();
    admin.send(1, {{"SITE renuser bob robert"}});
    admin.reloadUsers(1);
    EXPECT_TRUE(eventually([&] { return driver_->isIdle(1) && member(1) == u"robert"_s; }));
    EXPECT_EQ(box("txtGroupVFS").text(), u"/typed"_s);
}

TEST_F(Groups, AreAddedRenamedAndDeleted) {
    press("cmdGroupAdd");
    auto* const dialog = driver_->waitForBox<frmAddGroup>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>(u"txtGroupname"_s)->setText(u"newcomers"_s);
    QTest::mouseClick(dialog->findChild<QPushButton*>(u"cmdOK"_s), Qt::LeftButton);
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && rowOf(u"newcomers"_s) >= 0; }));
    EXPECT_TRUE(eventually([&] {
        return driver_->find<QPlainTextEdit>("txtCmdResults_1")
            .toPlainText()
            .contains(u"-------------[ END ]-[ ADDGROUP ]-------------"_s);
    }));

    open(u"newcomers"_s);
    box("txtGroupname").setText(u"regulars"_s);
    press("cmdGroupSaveChanges");
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && rowOf(u"regulars"_s) >= 0; }));

    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(driver_->answer(QMessageBox::Yes),
              u"Are u sure u want to delete this group:\nregulars\n\n"
              "Note: make sure the group has no members, otherwise it can not be deleted"_s);
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1); }));
    EXPECT_GE(rowOf(u"regulars"_s), 0) << "the list waits for the server";
    reload();
    EXPECT_LT(rowOf(u"regulars"_s), 0);
}

} // namespace
} // namespace corvel::test

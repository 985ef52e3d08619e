#include "admin/qt/frmAddGroup.h"
#include "demo/DemoServer.h"
#include "ui/WindowDriver.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

#include <gtest/gtest.h>

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

    int rowOf(const QString& name) {
        for (int row = 0; row < list().model()->rowCount(); ++row) {
            if (list().model()->index(row, nameColumn).data().toString() == name) {
                return row;
            }
        }
        return -1;
    }

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
    EXPECT_GT(driver_->find<ReportView>("lvwGroupMembers").model()->rowCount(), 0);
    box("txtGroupdescr").setText(u"die Größten"_s);
    box("txtGroupLeechslots").setText(u"7"_s);
    press("cmdGroupSaveChanges");
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1); }));
    reload();
    open(u"staff"_s);
    EXPECT_EQ(box("txtGroupdescr").text(), u"die Größten"_s);
    EXPECT_EQ(box("txtGroupLeechslots").text(), u"7"_s);
}

TEST_F(Groups, AreAddedRenamedAndDeleted) {
    press("cmdGroupAdd");
    auto* const dialog = driver_->waitForBox<frmAddGroup>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>(u"txtGroupname"_s)->setText(u"newcomers"_s);
    QTest::mouseClick(dialog->findChild<QPushButton*>(u"cmdOK"_s), Qt::LeftButton);
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && rowOf(u"newcomers"_s) >= 0; }));
    EXPECT_TRUE(driver_->find<QPlainTextEdit>("txtCmdResults_1")
                    .toPlainText()
                    .contains(u"-------------[ END ]-[ ADDGROUP ]-------------"_s));

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

#include "config/qt/frmSettings.h"
#include "net/qt/LoadTest.h"
#include "ui/DemoWindow.h"
#include "ui/Topmost.h"
#include "widgets/DialogDriver.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

class SettingsTab : public DemoWindow {
  protected:
    SettingsTab() { start("ssl_tunnel_host = localhost\nminimize_to_tray = 1\n"); }

    void press(const char* name) { driver_->find<QPushButton>(name).click(); }
    QCheckBox& box(const char* name) { return driver_->find<QCheckBox>(name); }
    ReportView& list() { return driver_->find<ReportView>("lvwAL"); }
    QString cell(int row, int column) { return list().model()->index(row, column).data().toString(); }
    QString column(int row) {
        const bool isShown = list().model()->index(row, 0).data(Qt::CheckStateRole) == Qt::Checked;
        return (isShown ? u"x "_s : u"- "_s) + cell(row, 1) + u' ' + cell(row, 2) + u' ' + cell(row, 3);
    }
    void pickColor(const char* button, const QColor& color) {
        press(button);
        auto* const dialog = driver_->waitForBox<QColorDialog>();
        ASSERT_NE(dialog, nullptr);
        dialog->setCurrentColor(color);
        dialog->accept();
    }
    std::string stored(const char* key) { return driver_->store.value(key).value_or("nothing"); }

    QString console() { return QString::fromStdString(driver_->session(1).consoleLog.text()).remove(u'\r'); }
    bool isTesting() { return driver_->window->findChild<LoadTest*>()->isRunning(); }
};

TEST_F(SettingsTab, TheDialogChangesColumnsAndColors) {
    press("cmdSettings");
    auto* const dialog = driver_->waitForBox<frmSettings>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(DialogDriver(*dialog).tabOrder(),
              (std::vector<std::string>{"lvwAL", "cmdLvwMove_0", "cmdLvwMove_1", "chkALUseColors",
                                        "cmdColorPickers_0", "cmdColorPickers_1", "cmdColorPickers_2",
                                        "cmdColorPickers_3", "cmdColorPickers_4", "cmdColorPickers_5",
                                        "txtSSLHost", "txtSSLPort", "cmdSave", "cmdClose"}));
    EXPECT_EQ(list().model()->rowCount(), 16);
    EXPECT_EQ(column(0), u"x 2 cid Yes"_s);
    EXPECT_EQ(column(15), u"x 17 session time Yes"_s);
    EXPECT_EQ(driver_->text("txtSSLHost"), u"localhost"_s);
    EXPECT_FALSE(box("chkShowTrayIcon").isChecked());
    EXPECT_TRUE(box("chkMinimizeToTray").isChecked());
    EXPECT_FALSE(box("chkMinimizeToTray").isEnabled());

    press("cmdLvwMove_0"); // already the first
    press("cmdLvwMove_1");
    press("cmdLvwMove_1");
    EXPECT_EQ(list().currentRow(), 2);
    EXPECT_EQ(column(2), u"x 2 cid Yes"_s);
    EXPECT_EQ(column(0), u"x 3 user Yes"_s);
    QTest::keyClick(&list(), Qt::Key_Return);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(column(2), u"- 2 cid No"_s);
    const QRect first = list().visualRect(list().model()->index(0, 0));
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {},
                       list().visualRect(list().model()->index(0, 2)).center());
    EXPECT_EQ(column(0), u"x 3 user No"_s);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, {first.left() + 8, first.center().y()});
    EXPECT_EQ(column(0), u"- 3 user No"_s);
    box("chkALUseColors").setChecked(true);
    pickColor("cmdColorPickers_3", QColor(1, 2, 3));
    EXPECT_EQ(driver_->find<QLabel>("lblSampleColors_1").palette().color(QPalette::Window), QColor(1, 2, 3));
    press("cmdSave");
    ASSERT_TRUE(driver_->waitForNoDialog());

    press("cmdSettings");
    ASSERT_NE(driver_->waitForBox<frmSettings>(), nullptr);
    EXPECT_EQ(column(0), u"- 3 user No"_s);
    press("cmdLvwMove_1");
    press("cmdClose");
    ASSERT_TRUE(driver_->waitForNoDialog());
    EXPECT_EQ(stored("activitylist_columnorder_2"), "nothing") << "the store is written at the end";
    driver_->close();
    EXPECT_EQ(stored("activitylist_columnorder_3"), "2");
    EXPECT_EQ(stored("activitylist_columnorder_4"), "3");
    EXPECT_EQ(stored("activitylist_columnorder_2"), "4");
    EXPECT_EQ(stored("activitylist_autosize_2"), "False");
    EXPECT_EQ(stored("activitylist_use_colors"), "1");
    EXPECT_EQ(stored("activitylist_color_up_bg"), "197121");
    EXPECT_EQ(stored("activitylist_color_up_fg"), "16777215");
}

TEST_F(SettingsTab, AlwaysOnTopHoldsForDialogsAndTheNextRun) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(driver_->window.get()));
    EXPECT_FALSE(isTopmost(*driver_->window));
    driver_->find<QAction>("mnuViewAlwaysOnTop").trigger();
    EXPECT_TRUE(box("chkAlwaysOnTop").isChecked());
    EXPECT_TRUE(isTopmost(*driver_->window));
    driver_->restart();
    EXPECT_TRUE(isTopmost(*driver_->window));
    driver_->find<QAction>("mnuHelpAbout").trigger();
    auto* const about = driver_->waitForBox<QDialog>();
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(isTopmost(*about));
    about->reject();
    ASSERT_TRUE(driver_->waitForNoDialog());
    box("chkAlwaysOnTop").click();
    EXPECT_TRUE(driver_->window->isVisible());
    EXPECT_FALSE(isTopmost(*driver_->window));
    driver_->close();
    EXPECT_EQ(stored("always_on_top"), "0");
}

TEST_F(SettingsTab, TheLoadTestRunsWhileTheBoxIsCheckedAndTheWindowIsOpen) {
    ASSERT_TRUE(driver_->logIn(1));
    auto& entry = driver_->find<QLineEdit>("txtSendFTP_1");
    press("Command1");
    EXPECT_TRUE(eventually([&] { return !isTesting(); })) << "the box is not checked";
    EXPECT_EQ(entry.text(), u"site test list"_s);
    EXPECT_FALSE(console().contains(u"site test list"_s));

    box("chkAlwaysOnTop").click();
    press("Command1");
    ASSERT_TRUE(eventually([&] { return console().count(u"> site test list\n"_s) > 60; }));
    EXPECT_EQ(entry.selectedText(), u"site test list"_s);
    press("cmdConfigRehash");
    EXPECT_TRUE(eventually([&] { return console().contains(u"> SITE config rehash"_s); }));
    EXPECT_TRUE(isTesting());
    box("chkAlwaysOnTop").click();
    EXPECT_TRUE(eventually([&] { return !isTesting() && driver_->isIdle(1); }));

    box("chkAlwaysOnTop").click();
    press("Command1");
    ASSERT_TRUE(isTesting());
    driver_->close();
    EXPECT_FALSE(isTesting());
    EXPECT_TRUE(driver_->waitForIdle());
}

} // namespace
} // namespace corvel::test

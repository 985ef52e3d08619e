#include "ui/WindowDriver.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QLabel>
#include <QPushButton>

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
    std::string stored(const char* key) { return driver_->store.value(key).value_or("nothing"); }
};

TEST_F(SettingsTab, TheDialogChangesColumnsAndColors) {
    press("cmdSettings");
    EXPECT_EQ(driver_->text("txtSSLHost"), u"localhost"_s);
    EXPECT_TRUE(box("chkMinimizeToTray").isChecked());
    EXPECT_FALSE(box("chkMinimizeToTray").isEnabled());

    press("cmdLvwMove_1");
    press("cmdLvwMove_1");
    EXPECT_EQ(column(2), u"x 2 cid Yes"_s);
    EXPECT_EQ(column(0), u"x 3 user Yes"_s);
    QTest::keyClick(&list(), Qt::Key_Return);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(column(2), u"- 2 cid No"_s);
    box("chkALUseColors").setChecked(true);
    press("cmdColorPickers_3");
    auto* const colors = driver_->waitForBox<QColorDialog>();
    ASSERT_NE(colors, nullptr);
    colors->setCurrentColor(QColor(1, 2, 3));
    colors->accept();
    press("cmdSave");
    ASSERT_TRUE(driver_->waitForNoDialog());

    EXPECT_EQ(stored("activitylist_columnorder_2"), "nothing") << "the store is written at the end";
    driver_->close();
    EXPECT_EQ(stored("activitylist_columnorder_3"), "2");
    EXPECT_EQ(stored("activitylist_autosize_2"), "False");
    EXPECT_EQ(stored("activitylist_use_colors"), "1");
    EXPECT_EQ(stored("activitylist_color_up_bg"), "197121");
}

TEST_F(SettingsTab, TheLoadTestCountsAndSaysHowToStopIt) {
    const auto state = [&] { return driver_->find<QLabel>("lblTestState").text(); };
    press("Command1");
    EXPECT_TRUE(eventually([&] { return state().endsWith(u"is not checked."_s); }));
    box("chkAlwaysOnTop").setChecked(true);
    press("Command1");
    EXPECT_TRUE(eventually([&] { return state().endsWith(u"to stop."_s); }));
    box("chkAlwaysOnTop").setChecked(false);
    EXPECT_TRUE(eventually([&] { return !state().endsWith(u"to stop."_s); }));
}

} // namespace
} // namespace corvel::test

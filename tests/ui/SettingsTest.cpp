#include "config/Files.h"
#include "ui/DemoHome.h"
#include "ui/SettingsPanel.h"
#include "ui/WindowDriver.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QWindow>

#include <set>

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
    bool isTesting() { return driver_->window->findChild<SettingsPanel*>()->isTesting(); }
};

TEST_F(SettingsTab, TheDialogChangesColumnsAndColors) {
    press("cmdSettings");
    EXPECT_EQ(driver_->text("txtSSLHost"), u"localhost"_s);
    EXPECT_TRUE(box("chkMinimizeToTray").isChecked());
    EXPECT_FALSE(box("chkMinimizeToTray").isEnabled());

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
    EXPECT_EQ(column(0), u"- 3 user No"_s);
    press("cmdLvwMove_1");
    press("cmdClose");
    ASSERT_TRUE(driver_->waitForNoDialog());
    EXPECT_EQ(stored("activitylist_columnorder_2"), "nothing") << "the store is written at the end";
    driver_->close();
    EXPECT_EQ(stored("activitylist_columnorder_3"), "2");
    EXPECT_EQ(stored("activitylist_autosize_2"), "False");
    EXPECT_EQ(stored("activitylist_use_colors"), "1");
    EXPECT_EQ(stored("activitylist_color_up_bg"), "197121");
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
}

TEST_F(SettingsTab, TheLoadTestRunsWhileTheBoxIsCheckedAndTheWindowIsOpen) {
    ASSERT_TRUE(driver_->logIn(1));
    press("Command1");
    EXPECT_TRUE(eventually([&] { return !isTesting(); })) << "the box is not checked";
    EXPECT_FALSE(console().contains(u"site test list"_s));

    box("chkAlwaysOnTop").click();
    press("Command1");
    ASSERT_TRUE(eventually([&] { return console().count(u"> site test list\n"_s) > 60; }));
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

TEST(SampleSettings, ShowEveryKey) {
    const DemoHome home;
    std::vector<std::string> lines = linesOf(readFile(home.directory() + "/settings.ini").bytes);
    for (std::string& line : lines) {
        static const QRegularExpression commentedOut(u"^# (?=[a-z_]+ = )"_s);
        line = QString::fromStdString(line).remove(commentedOut).toStdString();
    }
    const SettingsReading reading = parseSettings(lines);
    EXPECT_TRUE(reading.problems.empty());
    const Settings& shown = reading.settings;
    const Settings defaults;
    EXPECT_TRUE(shown.show_trayicon && shown.minimize_to_tray && shown.listing_merge_blanks);
    EXPECT_NE(shown.textbox_fontsize, defaults.textbox_fontsize);
    EXPECT_NE(shown.ssl_tunnel_port, defaults.ssl_tunnel_port);
    for (const auto text :
         {&Settings::site_nuke_syntax, &Settings::site_nuke_replace_spaces, &Settings::textbox_fontname,
          &Settings::ssl_tunnel_host, &Settings::window_caption_online, &Settings::window_caption_offline,
          &Settings::trayicon_text_online, &Settings::trayicon_text_offline}) {
        EXPECT_NE(shown.*text, defaults.*text);
    }
    for (std::size_t i = 0; i < imageKeys.size(); ++i) {
        EXPECT_NE(shown.images[i], "") << imageKeys[i].key;
    }
    EXPECT_EQ(shown.colors.size(), 1U);
}

// Every command of the sample's menus, sent for a row of the demo's server.
TEST(SampleSettings, DemoServerAnswersWhatTheMenusSend) {
    DemoHome home;
    frmMain window(home.store(), home.directory());
    window.start();
    mdlMain& program = window.program();
    const SiteSession& session = program.site(1).session;
    const auto isIdle = [&] {
        return session.bLoggedIn && !session.bAwaitingReply && !session.sBrowserPWD.empty() &&
               session.Groups.size() > 1;
    };
    ASSERT_TRUE(eventually(isIdle));
    const auto rowOf = [&](std::string_view name) {
        int row = 0;
        while (program.browser().entryAt(1, row) != nullptr &&
               program.browser().entryAt(1, row)->name != name) {
            ++row;
        }
        return row;
    };
    program.browser().open(1, rowOf("pub"));
    ASSERT_TRUE(eventually([&] { return isIdle() && session.sBrowserPWD == "/pub"; }));
    const std::string fileName(session.browser.listing.entries[session.browser.order.back()].name);
    program.browser().selectRow(1, static_cast<int>(session.browser.order.size()) - 1);
    program.admin().users().open(1, 5);
    program.admin().groups().open(1, 3);
    ASSERT_TRUE(eventually(isIdle));
    program.tmrRefreshWho_Timer(1, false);
    ASSERT_TRUE(eventually(isIdle));
    program.selectActivityRow(1, 1);
    int sent = 0;
    const std::set<std::string> actions = {"null",     "exec",   "exit", "chmod", "nuke",
                                           "copyuser", "chattr", "ftp",  "copy",  "kill"};
    for (const int kind : {1, 2, 3, 4, 5}) {
        const std::vector<MenuItem> items = program.menus().ShowCustomMenu(1, static_cast<MenuKind>(kind));
        EXPECT_FALSE(items.empty()) << kind;
        for (const MenuItem& item : items) {
            const MenuCommand command = parseMenuCommand(item.command);
            EXPECT_TRUE(actions.contains(command.action)) << item.command;
            if (command.action == "ftp") {
                ++sent;
                program.menus().ExecuteMenuCommand(1, "ftp " + command.argument);
                ASSERT_TRUE(eventually(isIdle));
                EXPECT_FALSE(session.lastErrorLine.starts_with("50")) // not understood, or in another form
                    << item.command << ": " << session.lastErrorLine;
            }
        }
    }
    EXPECT_EQ(sent, 8);
    window.close();
}

} // namespace
} // namespace corvel::test

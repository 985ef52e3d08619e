#include "ui/WindowDriver.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMessageBox>
#include <QProcess>
#include <QSystemTrayIcon>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

class CustomMenusTest : public DemoWindow {
  protected:
    // Presses the right mouse button on the row whose column reads text.
    void rightClick(const char* listName, int column, const QString& text) {
        auto& list = driver_->find<ReportView>(listName);
        const QModelIndex index = list.model()->index(rowWith(list, column, text), column);
        ASSERT_TRUE(index.isValid()) << text.toStdString();
        list.scrollTo(index);
        const QPoint place = list.visualRect(index).center();
        QTest::mouseClick(list.viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, list.viewport()->mapToGlobal(place));
        QApplication::sendEvent(list.viewport(), &event);
        driver_->waitForIdle();
    }

    QString caption(const char* itemName) { return driver_->find<QAction>(itemName).text(); }

    void choose(const char* itemName) {
        auto& item = driver_->find<QAction>(itemName);
        auto& menu = *qobject_cast<QMenu*>(item.parent());
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(&item).center());
        driver_->waitForIdle();
    }

    // A copy of the program that these tests start and end, under a name of its own.
    QString copyOfProgram(const QString& name) {
        const QString suffix = QFileInfo(QCoreApplication::applicationFilePath()).suffix();
        const QString ending = suffix == u"exe"_s ? u".exe"_s : QString();
        const QString copy = fromUtf8(driver_->directory.fileNamed((name + ending).toStdString()));
        EXPECT_TRUE(
            QFile::copy(QCoreApplication::applicationDirPath() + u"/corvel_test_companion"_s + ending, copy));
        return copy;
    }

    // A path, or the name of a file in the scratch directory, as the platform writes paths.
    std::string native(const std::string& name) {
        return QDir::toNativeSeparators(QDir(fromUtf8(driver_->directory.path())).filePath(fromUtf8(name)))
            .toStdString();
    }

    QString results() { return fromUtf8(driver_->session(1).commandResultsLog.text()); }
    static QString fromUtf8(const std::string& text) { return QString::fromStdString(text); }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }
};

TEST_F(CustomMenusTest, OpenForTheRowUnderTheMouseWhateverItsName) {
    const QString name = u"a & \"b\"; `c` | %(pwd) %s ü"_s;
    startOn(browserTab, "menu_browser = %(name) & \\t \"%(pwd)\" | null\n"
                        "menu_browser = wipe | ftp SITE wipe %(name)\n"
                        "menu_browser = copy | copy  %(pwd)|%(name)\n"
                        "menu_browser = kill | kill %(name)\n");
    driver_->press(Qt::Key_Insert);
    driver_->answerText(name);
    driver_->refresh();
    ASSERT_TRUE(driver_->waitForRow(name));
    for (const char* const item : {"mnuBrowser_1", "mnuBrowser_3"}) {
        rightClick("lvwBrowser_1", 0, name);
        EXPECT_EQ(caption("mnuBrowser_0"), u"a && \"b\"; `c` | %(pwd) %s ü && \\t \"/\""_s);
        choose(item);
    }
    EXPECT_TRUE(results().contains(u"> SITE wipe "_s + name + u"\r\n"_s)) << results().toStdString();
    QTest::keyClick(&driver_->browser(), Qt::Key_Menu);
    choose("mnuBrowser_2");
    EXPECT_EQ(clipboard(), u" /|"_s + name);
}

TEST_F(CustomMenusTest, EveryListHasItsOwn) {
    startOn(activityTab,
            "menu_userlist = %(name) %(user) %(uid) %(group) | copyuser\n"
            "menu_grouplist = %(name) %(gid) | ftp SITE CHANGE %(name) groupslots 3 1\n"
            "menu_activity = %(user) %(cid) | copy %(cid)|%(user)|%(group)|%(ident)|%(clientip)|%(pwd)\n");
    driver_->window->program().tmrRefreshWho_Timer(1, false);
    ASSERT_TRUE(driver_->waitForIdle());
    const auto choosesFor = [&](Tab tab, const char* list, int column, const QString& row, const char* item) {
        driver_->showTab(tab);
        rightClick(list, column, row);
        const QString shown = caption(item);
        choose(item);
        return shown;
    };
    constexpr int userColumn = static_cast<int>(ActivityCell::user);
    EXPECT_EQ(choosesFor(activityTab, "lvwActivity_1", userColumn, u"bob"_s, "mnuActivity_0"), u"bob 103"_s);
    EXPECT_EQ(choosesFor(groupsTab, "lvwGroups_1", 1, u"staff"_s, "mnuGrouplist_0"), u"staff 1"_s);
    EXPECT_EQ(choosesFor(usersTab, "lvwUsers_1", 1, u"alice"_s, "mnuUserlist_0"), u"alice alice 2 sysops"_s);
    EXPECT_EQ(clipboard().toStdString(), "103|bob|friends|bob|10.0.0.31|/archive/2021");
    EXPECT_EQ(server_.world().accounts.findGroup("staff")->groupSlots, 3);
    EXPECT_NE(driver_->waitForBox<QDialog>(), nullptr);
}

TEST_F(CustomMenusTest, WhatWasMadeForARowGoesToTheSiteOfTheRow) {
    startOn(browserTab, "menu_tray = x | ftp SITE tray\nmenu_browser = x | ftp SITE wipe %(name)\n");
    ASSERT_TRUE(driver_->logIn(2));
    mdlMain& program = driver_->window->program();
    program.selectSite(1);
    driver_->select(u"pub"_s);
    for (const MenuKind kind : {MenuKind::tray, MenuKind::browser}) {
        driver_->window->findChild<CustomMenus*>()->prepare(kind);
    }
    program.selectSite(2);
    for (const char* const item : {"mnuTray_0", "mnuBrowser_0"}) {
        driver_->find<QAction>(item).trigger();
    }
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && driver_->isIdle(2); }));
    EXPECT_TRUE(results().contains(u"> SITE wipe pub\r\n"_s)) << results().toStdString();
    EXPECT_TRUE(driver_->session(2).commandResultsLog.text().find("> SITE tray\r\n") != std::string::npos);
}

// As it does in the notification area, where the desktop opens the menu.
TEST_F(CustomMenusTest, TheTrayEndsTheProgramAfterAYesWhileItsWindowIsHidden) {
    startOn(browserTab, "show_trayicon = 1\nmenu_tray = Help | ftp SITE HELP\nmenu_tray = Quit | %exit\n");
    const QMenu* const menu = driver_->find<QSystemTrayIcon>("picTrayIcon").contextMenu();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 2);
    menu->actions()[0]->trigger();
    EXPECT_TRUE(results().contains(u"> SITE HELP\r\n"_s));
    menu->actions()[1]->trigger();
    EXPECT_EQ(driver_->answer(QMessageBox::No), u"Are u sure u want to perform this command?\n\n"_s);
    EXPECT_TRUE(driver_->waitForNoDialog());
    driver_->window->hide();
    QTimer::singleShot(0, driver_->window.get(), [&] {
        menu->actions()[1]->trigger();
        driver_->answer(QMessageBox::Yes);
    });
    QTimer::singleShot(20000, driver_->window.get(), [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(driver_->store.value("selected_tab")) << "the state is saved as at every close";
}

TEST_F(CustomMenusTest, ProgramsAreStartedInTheFolderOfThisOneAndEnded) {
    startOn(browserTab);
    QProcess victim;
    victim.start(copyOfProgram(u"The Victim"_s), {u"wait"_s});
    ASSERT_TRUE(victim.waitForStarted());
    driver_->run("kill " + native("the victi#*"));
    EXPECT_EQ(victim.state(), QProcess::Running);
    driver_->run("kill  " + native("the v?ctim*"));
    ASSERT_TRUE(victim.waitForFinished()) << "it waits for input, which never came";

    const QString program = copyOfProgram(u"my program"_s);
    driver_->run("exec \"" + native(program.toStdString()) + "\" further; words");
    // A file that is there need not have its text yet.
    EXPECT_TRUE(eventually([&] {
        QFile output(program + u".out"_s);
        return output.open(QIODevice::ReadOnly) &&
               QString::fromUtf8(output.readAll()) == u"0 "_s + QCoreApplication::applicationDirPath();
    }));
}

} // namespace
} // namespace corvel::test

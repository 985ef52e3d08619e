#include "ui/desktop/Desktop.h"
#include "ui/WindowDriver.h"

#include <QDialog>
#include <QLabel>
#include <QSystemTrayIcon>
#include <QTabWidget>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

const std::string withTray = "show_trayicon = 1\nminimize_to_tray = 1\n";

TEST(Status, FollowsWhoIsOnline) {
    DemoServer server(DemoOptions{});
    ASSERT_TRUE(server.listen());
    WindowDriver driver(siteRecord("[*]home", server.port(), DemoServer::userName, DemoServer::password),
                        withTray + "window_caption_online = %(sitename): %(online_all)\n"
                                   "trayicon_text_offline = %(sitename) is away\n");
    const auto& tray = driver.find<QSystemTrayIcon>("picTrayIcon");
    EXPECT_EQ(driver.window->windowTitle(), u"Corvel - [*][*]home"_s); // shown as [*]home
    EXPECT_EQ(tray.toolTip(), u"[*]home is away"_s);

    const QAbstractItemModel& rows = *driver.find<ReportView>("lvwStats").model();
    const auto online = [&rows] { return rows.index(1, 1).data().toString(); };
    ASSERT_TRUE(driver.logIn(1));
    driver.window->program().tmrRefreshWho_Timer(1, false);
    ASSERT_TRUE(eventually([&] { return tray.toolTip() == u"Corvel - [*]home"_s && driver.isIdle(1); }));
    ASSERT_TRUE(eventually([&] { return driver.window->windowTitle() == u"[*][*]home: 12"_s; }));
    EXPECT_EQ(online(), u"12"_s);

    driver.chooseSitesMenu(1);
    ASSERT_TRUE(eventually([&] { return tray.toolTip() == u"[*]home is away"_s; }));
    EXPECT_EQ(online(), u"0"_s);
}

TEST(Status, SaysWhatHappenedAndLeadsToIt) {
    DemoServer server(DemoOptions{});
    ASSERT_TRUE(server.listen());
    WindowDriver driver(siteRecord("home", server.port(), DemoServer::userName, "wrong") +
                        siteRecord("backup", server.port(), DemoServer::userName, DemoServer::password));
    const auto shows = [&driver](const char* label, const QString& text) {
        return eventually([&] { return driver.find<QLabel>(label).text().contains(text); });
    };
    auto& closed = driver.find<QWidget>("barClosed");
    EXPECT_TRUE(closed.isVisible());
    driver.click("cmdClosedConnect");
    EXPECT_TRUE(shows("lblLogin", u"not logged in: 530 "_s));
    EXPECT_TRUE(eventually([&closed] { return !closed.isVisible(); }));
    driver.window->program().selectSite(2);
    ASSERT_TRUE(driver.logIn(2));
    EXPECT_TRUE(shows("lblLogin", u"logged in as demo"_s));
    driver.window->program().wSock_Error(1, "Connection reset", 104);
    const QModelIndex first = driver.find<SitesList>("lvwSites").model()->index(0, 0);
    EXPECT_TRUE(eventually(
        [&] { return first.data(Qt::AccessibleTextRole).toString().endsWith(u"not looked at"_s); }));
    driver.window->program().selectSite(1);
    EXPECT_TRUE(shows("lblLastError", u" Connection reset"_s));
    EXPECT_FALSE(first.data(Qt::AccessibleTextRole).toString().endsWith(u"not looked at"_s));
    driver.window->program().selectSite(2);

    driver.showTab(usersTab);
    driver.clickRow("lvwUsers_2", 1, u"bob"_s);
    ASSERT_TRUE(eventually([&] { return driver.find<QWidget>("cmdUserSaveChanges").isEnabled(); }));
    driver.setText("txtUserName", u"alice"_s); // who is there already
    driver.click("cmdUserSaveChanges");
    EXPECT_TRUE(shows("lblUserOutcome", u" 1 of 1 refused: 5"_s));
    const auto& tabs = driver.find<QTabWidget>("tabMain");
    EXPECT_EQ(tabs.tabText(tabs.count() - 1), u"results (1)"_s);
    driver.click("lblUserOutcome");
    EXPECT_EQ(tabs.currentIndex(), tabs.count() - 1);
    EXPECT_EQ(tabs.tabText(tabs.count() - 1), u"results"_s);
}

TEST(Queue, TakesBackWhatWaits) {
    DemoServer server(DemoOptions{.latencyMilliseconds = 60000});
    ASSERT_TRUE(server.listen());
    WindowDriver driver(siteRecord("home", server.port(), DemoServer::userName, DemoServer::password));
    mdlMain& program = driver.window->program();
    program.connectSite(1);
    ASSERT_TRUE(eventually([&] { return program.site(1).wSock->state() == SocketState::connected; }));
    for (const char* const line : {"one", "two", "three"}) {
        program.sendConsoleCommand(1, line);
    }
    auto& waiting = driver.find<QLabel>("lblWaiting");
    ASSERT_TRUE(eventually([&] { return waiting.text() == u"3 waiting"_s; }));
    QTest::mouseClick(&waiting, Qt::LeftButton);
    auto* const queue = driver.waitForBox<QDialog>();
    ASSERT_NE(queue, nullptr);
    EXPECT_EQ(queue->objectName(), u"frmQueue"_s);
    auto& list = driver.find<ReportView>("lvwQueue");
    list.setCurrentRow(rowWith(list, 0, u"two"_s));
    driver.click("cmdQueueCancelJob");
    ASSERT_TRUE(eventually([&] { return waiting.text() == u"2 waiting"_s; }));
    EXPECT_EQ(list.model()->index(rowWith(list, 0, u"two"_s), 1).data().toString(), u"cancelled"_s);
    driver.click("cmdQueueCancel");
    EXPECT_TRUE(eventually([&] { return waiting.text().isEmpty(); }));
}

// A window that is hidden when it is minimised, with a notification area that the test takes away and gives.
struct Hiding {
    explicit Hiding(bool hasTrayAtFirst) : hasTray(hasTrayAtFirst) {
        window.show();
        new MinimizeToTray(window, [this] { return hasTray; });
    }

    void minimize() {
        window.setWindowState(window.windowState() | Qt::WindowMinimized);
        QCoreApplication::processEvents();
    }

    QWidget window;
    bool hasTray;
};

TEST(Tray, MinimisingHidesOnlyWhereTheWindowCanComeBack) {
    Hiding withoutTray(false);
    withoutTray.minimize();
    EXPECT_TRUE(withoutTray.window.isVisible());

    Hiding withDialog(true);
    QDialog dialog(&withDialog.window);
    dialog.open();
    withDialog.minimize();
    EXPECT_TRUE(withDialog.window.isVisible());
}

TEST(Tray, AHiddenWindowComesBackWhenTheTrayGoes) {
    Hiding hiding(true);
    hiding.minimize();
    auto& watch = *hiding.window.findChild<QTimer*>(u"tmrTrayWatch"_s);
    watch.setInterval(0);
    QCoreApplication::processEvents();
    ASSERT_FALSE(hiding.window.isVisible());
    hiding.hasTray = false;
    EXPECT_TRUE(eventually([&] { return hiding.window.isVisible(); }));
    EXPECT_FALSE(hiding.window.isMinimized());
}

} // namespace
} // namespace corvel::test

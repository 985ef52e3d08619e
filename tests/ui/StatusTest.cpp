#include "ui/desktop/Desktop.h"
#include "ui/WindowDriver.h"

#include <QDialog>
#include <QSystemTrayIcon>
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

#include "demo/DemoServer.h"
#include "ui/WindowDriver.h"
#include "widgets/Icons.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QSystemTrayIcon>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

const std::string withTray = "show_trayicon = 1\nminimize_to_tray = 1\n";

QImage shown(const QIcon& icon) {
    return icon.pixmap(32, 32).toImage();
}

// The values of the statistics list, one behind the other.
QString statistics(WindowDriver& driver) {
    const QAbstractItemModel& rows = *driver.find<ReportView>("lvwStats").model();
    QStringList values;
    for (int row = 0; row < rows.rowCount(); ++row) {
        values.append(rows.index(row, 1).data().toString());
    }
    return values.join(u' ');
}

TEST(Status, FollowsWhoIsOnline) {
    DemoServer server(DemoOptions{});
    ASSERT_TRUE(server.listen());
    WindowDriver driver(siteRecord("[*]home", server.port(), DemoServer::userName, DemoServer::password),
                        withTray + "window_caption_online = %(sitename): %(online_all)\n"
                                   "trayicon_text_offline = %(sitename) is away\n");
    const auto& tray = driver.find<QSystemTrayIcon>("picTrayIcon");
    EXPECT_EQ(driver.window->windowTitle(), u"Corvel - [*][*]home"_s); // shown as [*]home
    EXPECT_EQ(tray.toolTip(), u"[*]home is away"_s);
    EXPECT_EQ(shown(tray.icon()), shown(icon("tray-idle")));
    EXPECT_EQ(statistics(driver), u"[*]home 0 0 0 0 0 0 0 0"_s);

    ASSERT_TRUE(driver.logIn(1));
    driver.window->program().tmrRefreshWho_Timer(1, false);
    ASSERT_TRUE(eventually([&] { return tray.toolTip() == u"Corvel - [*]home"_s && driver.isIdle(1); }));
    ASSERT_TRUE(eventually([&] { return driver.window->windowTitle() == u"[*][*]home: 12"_s; }));
    EXPECT_EQ(shown(tray.icon()), shown(icon("tray-both")));
    EXPECT_EQ(statistics(driver), u"[*]home 12 6 3 3 6 13632 2484 11148"_s);
    EXPECT_EQ(driver.find<QLabel>("lblTransfers").text(), u"3 up 2484 kBps · 3 down 11148 kBps"_s);
    EXPECT_EQ(driver.find<QPlainTextEdit>("txtStats").toPlainText(),
              u"Idlers: 6\nUpload: 3 @ 2484 kBps \nDownload: 3 @ 11148 kBps \nTotal: 12 @ 13632 kBps "_s);

    driver.chooseSitesMenu(1);
    ASSERT_TRUE(eventually([&] { return tray.toolTip() == u"[*]home is away"_s; }));
    EXPECT_EQ(shown(tray.icon()), shown(icon("tray-idle")));
    EXPECT_EQ(statistics(driver), u"[*]home 0 0 0 0 0 0 0 0"_s);
    EXPECT_EQ(driver.find<QLabel>("lblTransfers").text(), QString());
}

TEST(Status, ALongTextDoesNotWidenTheWindow) {
    WindowDriver driver(siteRecord(std::string(500, 'n'), 1, "demo", "demo"));
    driver.window->resize(driver.window->minimumSize());
    EXPECT_EQ(driver.window->size(), driver.window->minimumSize());
    EXPECT_EQ(driver.find<QLabel>("lblConnection").toolTip(), QString(500, u'n') + u": Socket closed"_s);
}

TEST(Status, TheTrayIconIsThereWhenAskedForAndUntilTheWindowCloses) {
    WindowDriver without("");
    EXPECT_EQ(without.window->findChild<QSystemTrayIcon*>(), nullptr);

    WindowDriver driver("", withTray);
    const auto& tray = driver.find<QSystemTrayIcon>("picTrayIcon");
    EXPECT_EQ(tray.toolTip(), u"Corvel"_s);
    EXPECT_EQ(shown(tray.icon()), shown(icon("tray-offline")));
    driver.close();
    EXPECT_EQ(driver.window->findChild<QSystemTrayIcon*>(), nullptr);
}

// The platform of the tests has no notification area, although the icon is shown.
TEST(Status, TheWindowIsNeverLostWhereThereIsNoTray) {
    WindowDriver driver("", withTray);
    ASSERT_TRUE(driver.find<QSystemTrayIcon>("picTrayIcon").isVisible());
    driver.window->showMinimized();
    QCoreApplication::processEvents();
    EXPECT_TRUE(driver.window->isVisible());
    EXPECT_FALSE(driver.window->program().windowState().tray_hint_given);
    emit driver.find<QSystemTrayIcon>("picTrayIcon").activated(QSystemTrayIcon::Trigger);
    EXPECT_FALSE(driver.window->isMinimized());
}

TEST(Status, ClosingAHiddenWindowEndsTheProgramAndKeepsItsState) {
    WindowDriver driver("", withTray);
    driver.window->setGeometry(40, 30, 710, 620);
    driver.window->showMaximized();
    driver.window->showMinimized();
    driver.window->hide();
    QTimer::singleShot(0, driver.window.get(), &QWidget::close);
    QTimer::singleShot(20000, driver.window.get(), [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_EQ(driver.store.value("window_state"), "1");
    EXPECT_EQ(driver.store.value("window_left"), "600");
    EXPECT_EQ(driver.store.value("window_width"), "10650");
}

} // namespace
} // namespace corvel::test

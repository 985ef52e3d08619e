#include "ui/desktop/Desktop.h"
#include "ui/desktop/mdlTrayIcon.h"
#include "ui/WindowDriver.h"
#include "widgets/Icons.h"

#include <QDialog>
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
}

TEST(Status, ALongTextDoesNotWidenTheWindow) {
    WindowDriver driver(siteRecord(std::string(500, 'n'), 1, "demo", "demo"));
    driver.window->resize(driver.window->minimumSize());
    EXPECT_EQ(driver.window->size(), driver.window->minimumSize());
    EXPECT_EQ(driver.find<QLabel>("lblConnection").toolTip(), QString(500, u'n') + u": Socket closed"_s);
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

// A window that is hidden when it is minimised, with a notification area that the test takes away and gives.
struct Hiding {
    explicit Hiding(bool hasTrayAtFirst, Qt::WindowStates state = Qt::WindowNoState)
        : hasTray(hasTrayAtFirst) {
        window.setWindowState(state);
        window.show();
        hiding = new MinimizeToTray(window, [this] { return hasTray; });
        QObject::connect(hiding, &MinimizeToTray::hidden, &window, [this] { ++timesHidden; });
    }

    void minimize() {
        window.setWindowState(window.windowState() | Qt::WindowMinimized);
        QCoreApplication::processEvents();
    }

    QWidget window;
    bool hasTray;
    int timesHidden = 0;
    MinimizeToTray* hiding = nullptr;
};

TEST(Tray, MinimisingHidesOnlyWhereTheWindowCanComeBack) {
    Hiding beside(true);
    beside.minimize();
    EXPECT_FALSE(beside.window.isVisible());
    EXPECT_EQ(beside.timesHidden, 1);

    Hiding withoutTray(false);
    withoutTray.minimize();
    EXPECT_TRUE(withoutTray.window.isVisible());
    EXPECT_TRUE(withoutTray.window.isMinimized());
    EXPECT_EQ(withoutTray.timesHidden, 0);

    Hiding withDialog(true);
    QDialog dialog(&withDialog.window);
    dialog.open();
    withDialog.minimize();
    EXPECT_TRUE(withDialog.window.isVisible());
}

TEST(Tray, AHiddenWindowComesBackAsItWas) {
    for (const Qt::WindowStates state : {Qt::WindowNoState, Qt::WindowMaximized}) {
        Hiding hiding(true, state);
        hiding.minimize();
        ASSERT_FALSE(hiding.window.isVisible());
        bringToFront(hiding.window);
        EXPECT_TRUE(hiding.window.isVisible());
        EXPECT_FALSE(hiding.window.isMinimized());
        EXPECT_EQ(hiding.window.isMaximized(), state == Qt::WindowMaximized);
        hiding.minimize();
        EXPECT_EQ(hiding.timesHidden, 2);
    }
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
    EXPECT_FALSE(watch.isActive());
}

TEST(Tray, NothingButAClickOnTheIconCounts) {
    mdlTrayIcon tray;
    int clicks = 0;
    QObject::connect(&tray, &mdlTrayIcon::clicked, &tray, [&clicks] { ++clicks; });
    tray.TrayModify(icon("tray-up"), u"too early"_s);
    EXPECT_EQ(tray.findChild<QSystemTrayIcon*>(), nullptr);
    tray.TrayAdd(icon("tray-idle"), u"Corvel"_s);
    for (const auto reason : {QSystemTrayIcon::Context, QSystemTrayIcon::DoubleClick,
                              QSystemTrayIcon::MiddleClick, QSystemTrayIcon::Trigger}) {
        emit tray.findChild<QSystemTrayIcon*>()->activated(reason);
    }
    EXPECT_EQ(clicks, 1);
}

} // namespace
} // namespace corvel::test

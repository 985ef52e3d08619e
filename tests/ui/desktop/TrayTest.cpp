#include "ui/desktop/mdlTrayIcon.h"
#include "ui/desktop/Stacking.h"
#include "ui/WindowDriver.h"
#include "widgets/Icons.h"

#include <QDialog>
#include <QSystemTrayIcon>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

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
    Hiding withTray(true);
    withTray.minimize();
    EXPECT_FALSE(withTray.window.isVisible());
    EXPECT_EQ(withTray.timesHidden, 1);

    Hiding withoutTray(false);
    withoutTray.minimize();
    EXPECT_TRUE(withoutTray.window.isVisible());
    EXPECT_TRUE(withoutTray.window.isMinimized());
    EXPECT_EQ(withoutTray.timesHidden, 0);

    Hiding startedMinimised(true, Qt::WindowMinimized);
    QCoreApplication::processEvents();
    EXPECT_TRUE(startedMinimised.window.isVisible());

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

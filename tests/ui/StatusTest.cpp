#include "ui/WindowDriver.h"
#include "widgets/Icons.h"

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
    driver.window->showMinimized();
    driver.window->hide();
    QTimer::singleShot(0, driver.window.get(), &QWidget::close);
    QTimer::singleShot(20000, driver.window.get(), [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_EQ(driver.store.value("window_state"), "1");
}

} // namespace
} // namespace corvel::test

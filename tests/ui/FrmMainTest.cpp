#include "ui/frmMain.h"

#include "common/Text.h"
#include "config/PlatformFiles.h"
#include "ui/desktop/Desktop.h"
#include "ui/WindowDriver.h"

#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

const std::string oneSite = siteRecord("home", 1, "bob", "secret");

TEST(FrmMain, AddsAndEditsASite) {
    WindowDriver driver("");
    driver.chooseSitesMenu(6);
    ASSERT_NE(driver.waitForBox<QDialog>(), nullptr);
    driver.setTexts({{"txtSitename", u"home"_s},
                     {"txtHostname", u"127.0.0.1"_s},
                     {"txtPort", u"65536"_s},
                     {"txtUsername", u"bob"_s},
                     {"txtPassword", u"secret"_s}});
    driver.click("OKButton");
    EXPECT_EQ(driver.answer(QMessageBox::Ok), u"Please enter a valid port (1 - 65535)"_s);
    driver.setText("txtPort", u"2121"_s);
    driver.click("OKButton");
    ASSERT_TRUE(driver.waitForNoDialog());

    // An added site has no password; editing it stores one.
    driver.restart();
    driver.chooseSitesMenu(3);
    ASSERT_NE(driver.waitForBox<QDialog>(), nullptr);
    driver.setText("txtSitename", u"größer"_s);
    driver.setText("txtPassword", u"new"_s);
    driver.find<QCheckBox>("chkUseSSLProxy").setChecked(true);
    driver.press("txtPassword", Qt::Key_Return);
    ASSERT_TRUE(driver.waitForNoDialog());
    driver.close();
    EXPECT_EQ(replaceAll(driver.directory.read("sites.ini"), platformLineEnd, "\n"),
              "name = größer\nhost = 127.0.0.1\nport = 2121\nuser = bob\npass = new\nident = \n"
              "connectonstartup = 0\nusesslproxy = 1\n\n");
}

TEST(FrmMain, TheKeyOfATabGoesToWhereOneWorksOnIt) {
    WindowDriver driver(oneSite);
    driver.window->activateWindow();
    const std::vector<QString> places = {u"txtSendFTP_1"_s,   u"lvwActivity_1"_s,  u"lvwBrowser_1"_s,
                                         u"lvwStats"_s,       u"lvwUsers_1"_s,     u"lvwGroups_1"_s,
                                         u"chkAlwaysOnTop"_s, u"txtCmdResults_1"_s};
    for (std::size_t tab = 0; tab < places.size(); ++tab) {
        driver.find<QAction>(("mnuViewTab_" + std::to_string(tab)).c_str()).trigger();
        ASSERT_NE(driver.window->focusWidget(), nullptr);
        EXPECT_EQ(driver.window->focusWidget()->objectName(), places[tab]);
    }
}

TEST(FrmMain, RemembersItsState) {
    WindowDriver driver(oneSite);
    driver.showTab(4);
    driver.window->setGeometry(40, 30, 710, 620);
    driver.find<QAction>("mnuViewSitesList").trigger();
    driver.find<QAction>("mnuViewAlwaysOnTop").trigger();
    driver.restart();
    EXPECT_EQ(driver.find<QTabWidget>("tabMain").currentIndex(), 4);
    EXPECT_FALSE(driver.find<QWidget>("lvwSites").isVisible());
    EXPECT_EQ(driver.window->geometry(), QRect(40, 30, 710, 620));
    EXPECT_TRUE(driver.find<QCheckBox>("chkAlwaysOnTop").isChecked());
}

TEST(FrmMain, TellsWhatWasWrongWhenItStarted) {
    WindowDriver driver("<html>", "ssl_tunnel_port = none\n");
    auto& notice = driver.find<QLabel>("lblNotice");
    EXPECT_TRUE(notice.isVisible());
    EXPECT_TRUE(notice.text().startsWith(u"settings.ini: ssl_tunnel_port: "_s))
        << notice.text().toStdString();
    QTest::mouseClick(&driver.find<QToolButton>("cmdNoticeClose"), Qt::LeftButton);
    EXPECT_FALSE(notice.isVisible());
}

TEST(FrmMain, EndsWhenWhatItAsksIsAnswered) {
    WindowDriver driver("");
    driver.window->program().addSite(
        {.txtSitename = "a", .txtHostname = "h", .txtPort = "1", .txtUsername = "u", .txtPassword = "p"});
    driver.directory.makeDirectory("sites.ini");
    driver.close();
    EXPECT_TRUE(driver.window->isVisible()) << "the program would end with its window";
    const auto* const box = driver.waitForBox<QMessageBox>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->button(QMessageBox::Yes)->text(), u"&write mine"_s);
    EXPECT_EQ(box->button(QMessageBox::No)->text(), u"&keep theirs"_s);
    EXPECT_TRUE(driver.answer(QMessageBox::No).contains(u"Write the sites of this window"_s));
    EXPECT_TRUE(eventually([&] { return !driver.window->isVisible(); }));
    EXPECT_TRUE(driver.store.value("selected_tab"));
}

TEST(StartOptions, AreReadOrExplained) {
    const auto read = [](const QStringList& arguments) {
        return readStartOptions(QStringList{u"corvel"_s} + arguments, u"default"_s);
    };
    EXPECT_EQ(read({}).directory, u"default"_s);
    EXPECT_TRUE(read({}).message.isEmpty() && !read({}).demo);
    EXPECT_TRUE(read({u"--demo"_s}).message.isEmpty() && read({u"--demo"_s}).demo);
    EXPECT_EQ(read({u"--config-dir"_s, u"x"_s}).directory, u"x"_s);
    const std::vector<std::tuple<QString, bool, QString>> rows = {
        // is it wrong, and what is said
        {u"--config-dir="_s, true, u"--config-dir needs a directory."_s},
        {u"--help"_s, false, u"Usage:"_s},
        {u"-v"_s, false, u"Corvel "_s},
        {u"--nonsense"_s, true, u"Unknown option 'nonsense'"_s},
    };
    for (const auto& [argument, isWrong, message] : rows) {
        EXPECT_EQ(read({argument}).isWrong, isWrong) << argument.toStdString();
        EXPECT_TRUE(read({argument}).message.startsWith(message)) << argument.toStdString();
    }
}

} // namespace
} // namespace corvel::test

#include "config/Files.h"
#include "config/PlatformFiles.h"
#include "net/qt/SitesList.h"
#include "ui/desktop/Desktop.h"
#include "ui/GuideWindow.h"
#include "ui/WindowDriver.h"
#include "widgets/Colours.h"

#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QScrollBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

// Of a picture's outermost colours with the one that has the most of its upper left corner, the greater one.
double contrastOf(const QImage& picture) {
    const QColor ground = picture.pixelColor(picture.width() / 2, 2);
    double most = 1;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            most = std::max(most, contrast(ground, picture.pixelColor(x, y)));
        }
    }
    return most;
}

class SitesOfTheDemo : public DemoWindow {
  protected:
    void remove(int answer) {
        driver_->find<QAction>("mnuSitesRemove").trigger();
        question_ = driver_->answer(answer);
        driver_->waitForNoDialog();
    }
    int rows() { return driver_->find<SitesList>("lvwSites").model()->rowCount(); }
    bool exists(const char* name) {
        return driver_->window->findChild<QObject*>(QLatin1String(name)) != nullptr;
    }

    QString question_;
};

TEST_F(SitesOfTheDemo, GoWithAllThatIsTheirsAndNeverComeBack) {
    startOn(browserTab);
    driver_->find<QAction>("mnuSitesConnectAll").trigger();
    ASSERT_TRUE(eventually([&] { return driver_->session(2).bLoggedIn && driver_->isIdle(2); }));
    remove(QMessageBox::No);
    EXPECT_EQ(rows(), 2);
    remove(QMessageBox::Yes);
    EXPECT_TRUE(question_.startsWith(u"Remove the site \"home\"?"_s)) << question_.toStdString();
    EXPECT_TRUE(question_.contains(u"Its connection ends."_s));
    EXPECT_EQ(driver_->window->program().currentSite(), 2);
    EXPECT_EQ(rows(), 1);
    EXPECT_GE(contrastOf(driver_->find<SitesList>("lvwSites").viewport()->grab().toImage()), 3)
        << "whatever the style does to the row that is selected";
    EXPECT_TRUE(eventually([&] { return !exists("tmrNoop_1") && !exists("lvwBrowser_1"); }));
    EXPECT_TRUE(exists("tmrNoop_2"));

    // The row of site 2 is the first one now.
    driver_->find<QAction>("mnuSitesDisconnectAll").trigger();
    const auto& list = driver_->find<SitesList>("lvwSites");
    EXPECT_TRUE(
        eventually([&] { return list.model()->index(0, 1).data().toString() == u"Socket closed"_s; }));
    driver_->find<QAction>("mnuSitesDuplicate").trigger();
    ASSERT_NE(driver_->waitForBox<QDialog>(), nullptr);
    driver_->click("cmdAddConnect");
    ASSERT_TRUE(driver_->waitForNoDialog());
    EXPECT_EQ(driver_->window->program().currentSite(), 3);
    EXPECT_TRUE(eventually([&] { return driver_->session(3).bLoggedIn; })) << "with the typed password";
    QTest::keyClick(driver_->window.get(), Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(driver_->find<QAction>("mnuSites_3").text(), u"backup (copy)"_s);
    driver_->close();
    EXPECT_EQ(driver_->directory.read("sites.ini").find("home"), std::string::npos);
    EXPECT_NE(driver_->directory.read("sites.ini").find("name = backup (copy)"), std::string::npos);
}

TEST(StartPage, StandsInForEveryPageThatNeedsASite) {
    WindowDriver driver(siteRecord("home", 1, "bob", ""));
    EXPECT_EQ(driver.window->findChild<QWidget*>(u"pgStart"_s), nullptr);
    driver.chooseSitesMenu(0);
    EXPECT_TRUE(driver.session(1).lastErrorLine.starts_with("No password is kept")) << "and none is sent";
    driver.find<QAction>("mnuSitesRemove").trigger();
    driver.answer(QMessageBox::Yes);
    ASSERT_TRUE(driver.waitForNoDialog());
    auto& page = driver.find<QWidget>("pgStart");
    for (int tab = 0; tab < 8; ++tab) {
        driver.showTab(tab);
        EXPECT_EQ(page.isVisible(), tab != 6) << tab;
        EXPECT_EQ(driver.find<QTabWidget>("tabMain").currentWidget()->isVisible(), tab == 6) << tab;
    }
    EXPECT_FALSE(driver.find<QAction>("mnuSitesConnectAll").isEnabled());
    EXPECT_FALSE(driver.find<QWidget>("cmdConfigRehash").isEnabled());
    driver.click("cmdStartAdd");
    ASSERT_NE(driver.waitForBox<QDialog>(), nullptr);
    driver.setTexts({{"txtSitename", u"a"_s},
                     {"txtHostname", u"127.0.0.1"_s},
                     {"txtPort", u"0"_s},
                     {"txtUsername", u"u"_s},
                     {"txtPassword", u"p"_s}});
    driver.click("OKButton");
    driver.answer(QMessageBox::Ok);
    const auto& port = driver.find<QWidget>("txtPort");
    EXPECT_EQ(port.window()->focusWidget(), &port) << "where the mistake is";
    driver.setText("txtPort", u"1"_s);
    driver.click("OKButton");
    ASSERT_TRUE(driver.waitForNoDialog());
    EXPECT_EQ(driver.window->program().currentSite(), 2) << "an index is not used again";
    EXPECT_FALSE(page.isVisible());
}

TEST(SitesFolder, IsOneWindowsAndTheOtherLeadsThere) {
    WindowDriver first(siteRecord("home", 1, "bob", "secret"));
    EXPECT_EQ(first.window->findChild<QWidget*>(u"barNotice"_s), nullptr);
    frmMain second(first.store, first.directory.path());
    second.start();
    auto* const text = second.findChild<QLabel*>(u"lblBarNotice"_s);
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->text().contains(u"will not be saved"_s) && text->isVisible());
    first.window->showMinimized();
    QCoreApplication::processEvents(); // the first one listens by now
    second.findChild<QToolButton*>(u"cmdNoticeOther"_s)->click();
    EXPECT_TRUE(eventually([&] { return !second.isVisible() && !first.window->isMinimized(); }));
}

TEST(SitesFolder, OffersWhatACrashLeft) {
    WindowDriver driver(siteRecord("home", 1, "bob", "secret") + siteRecord("gone", 1, "bob", "secret"));
    mdlMain& program = driver.window->program();
    program.changeSite(1, {"moved", "127.0.0.1", "1", "bob", "p"});
    program.addSite({"new", "i", "21", "u", "p"});
    driver.find<QAction>("mnuSites_2").trigger();
    driver.find<QAction>("mnuSitesRemove").trigger();
    driver.answer(QMessageBox::Yes);
    EXPECT_NE(driver.directory.read("sites.ini.unsaved").find("name = new"), std::string::npos);
    driver.window.reset(); // without being closed
    driver.start();
    EXPECT_TRUE(driver.find<QLabel>("lblBarNotice").text().contains(u"(1 added, 1 changed, 1 removed)"_s))
        << driver.find<QLabel>("lblBarNotice").text().toStdString();
    driver.click("cmdNoticeTake");
    driver.close();
    EXPECT_EQ(parseSites(linesOf(driver.directory.read("sites.ini"))),
              (std::vector<SiteConfig>{
                  {.name = "moved", .host = "127.0.0.1", .port = 1, .user = "bob", .pass = "p"},
                  {.name = "new", .host = "i", .port = 21, .user = "u"}}));
    EXPECT_FALSE(FileExists(driver.directory.fileNamed("sites.ini.unsaved")));
}

TEST(SitesFolder, IsTheUsersWhereTheProgramsCannotBeWritten) {
    const TemporaryDirectory directory;
    const QString folder = QString::fromStdString(directory.path());
    const QString user = folder + u"/user"_s;
    EXPECT_EQ(configurationFolder(folder, user), folder);
    EXPECT_EQ(configurationFolder(folder + u"/missing"_s, user), user);
    directory.write("user/sites.ini", "");
    directory.write("sites.ini", "");
    EXPECT_EQ(configurationFolder(folder, user), folder) << "it can be written";
    WindowDriver driver("");
    frmMain window(driver.store, driver.directory.fileNamed("missing"));
    window.start();
    EXPECT_TRUE(window.findChild<QLabel*>(u"lblBarNotice"_s)->text().contains(u"missing can't be written"_s));
    EXPECT_NE(window.findChild<QToolButton*>(u"cmdNoticeFolder"_s), nullptr);
}

TEST(SitesFolder, SaysThatOthersReadThePasswords) {
    WindowDriver driver(siteRecord("home", 1, "bob", ""));
    EXPECT_EQ(driver.window->findChild<QWidget*>(u"barReadable"_s), nullptr) << "there is none to read";
    driver.directory.write("sites.ini", siteRecord("home", 1, "bob", "secret"));
    const std::filesystem::path file = filePath(driver.directory.fileNamed("sites.ini"));
    for (const bool isRead : {isReadableByOthers(file), false}) { // nothing is known of that on Windows
        driver.window.reset();
        driver.start();
        auto* const text = driver.window->findChild<QLabel*>(u"lblBarReadable"_s);
        ASSERT_EQ(text != nullptr, isRead);
        if (isRead) {
            EXPECT_TRUE(text->text().contains(u"readable by others"_s) && text->isVisible());
            driver.click("cmdReadableNarrow");
            EXPECT_FALSE(text->isVisible());
        }
    }
}

TEST(Guide, IsFoundBesideTheProgramAndLeadsToItsHeadings) {
    QWidget owner;
    owner.show();
    ASSERT_EQ(showGuide(owner), QString());
    auto& guide = *owner.findChild<QTextBrowser*>(u"txtGuide"_s);
    EXPECT_GT(guide.document()->size().height(), 5000) << "with its pictures";
    guide.setSource(guide.source().resolved(QUrl(u"#the-tray-icon"_s)));
    EXPECT_TRUE(eventually([&] { return guide.verticalScrollBar()->value() > 1000; }));
}

} // namespace
} // namespace corvel::test

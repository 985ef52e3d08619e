#include "ui/DemoWindow.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

class DemoSites : public DemoWindow {
  protected:
    explicit DemoSites(const DemoOptions& options = {}) : DemoWindow(options) { start(); }

    QString text(const char* name) { return driver_->find<QPlainTextEdit>(name).toPlainText(); }
};

TEST_F(DemoSites, TwoSitesLogInSideBySide) {
    ASSERT_TRUE(driver_->logIn(1));
    ASSERT_TRUE(driver_->logIn(2));
    EXPECT_EQ(server_.clientCount(), 2);
    EXPECT_TRUE(driver_->waitForRow(u"pub"_s));
    const QAbstractItemModel& sites = *driver_->find<QAbstractItemView>("lvwSites").model();
    const QString connected = u"Connected (127.0.0.1:%1)"_s.arg(server_.port());
    EXPECT_TRUE(eventually([&] { return sites.index(1, 1).data().toString() == connected; }));
    driver_->chooseSitesMenu(1);
    EXPECT_TRUE(eventually([&] { return sites.index(1, 1).data().toString() == u"Socket closed"_s; }));
    EXPECT_EQ(sites.index(0, 1).data().toString(), connected);
    EXPECT_TRUE(driver_->session(1).bLoggedIn);
}

TEST_F(DemoSites, ConsoleSendsWhatIsTypedAndSelectsIt) {
    ASSERT_TRUE(driver_->logIn(1));
    auto& command = driver_->find<QLineEdit>("txtSendFTP_1");
    QTest::keyClicks(&command, u"SYST"_s);
    QTest::keyClick(&command, Qt::Key_Return);
    EXPECT_EQ(command.selectedText(), u"SYST"_s);
    EXPECT_TRUE(eventually([&] { return text("txtLogFTP_1").contains(u" 215 "_s); }));
    EXPECT_TRUE(text("txtLogFTP_1").contains(u"> SYST\n"_s));
    EXPECT_FALSE(text("txtLogFTP_1").contains(u"PASS demo"_s));
    EXPECT_TRUE(text("txtLogFTP_2").isEmpty());
}

TEST_F(DemoSites, BrowserWalksSortsAndCounts) {
    driver_->showTab(browserTab);
    ASSERT_TRUE(driver_->logIn(1));
    ASSERT_TRUE(driver_->waitForRow(u"pub"_s));
    driver_->doubleClick(u"pub"_s);
    ASSERT_TRUE(eventually([&] { return driver_->path() == u"/pub"_s && driver_->isIdle(1); }));
    const QAbstractItemModel& model = *driver_->browser().model();
    EXPECT_EQ(model.index(0, 0).data().toString(), u".."_s);
    EXPECT_EQ(model.index(0, 6).data().toString(), u"0"_s);

    const SiteSession& session = driver_->session(1);
    EXPECT_TRUE(eventually([&] {
        return driver_->find<QLabel>("lblBrowserFileCnt").text().toULongLong() ==
               session.browser.listing.fileCount;
    }));
    EXPECT_EQ(driver_->find<QLabel>("lblBrowserDirCnt").text().toULongLong(),
              session.browser.listing.directoryCount);

    const QString last = model.index(model.rowCount() - 1, 0).data().toString();
    driver_->select(last);
    emit driver_->browser().headerClicked(0);
    EXPECT_EQ(driver_->browser().currentIndex().data().toString(), last);
    EXPECT_EQ(model.index(0, 0).data().toString(), u".."_s);
    EXPECT_NE(model.index(model.rowCount() - 1, 0).data().toString(), last);

    driver_->click("cmdBrowser_0");
    EXPECT_TRUE(eventually([&] { return driver_->path() == u"/"_s; }));
}

TEST_F(DemoSites, BrowserChangesTheServer) {
    ASSERT_TRUE(driver_->logIn(1));
    driver_->press(Qt::Key_Insert);
    driver_->answerText(u"größer  als"_s);
    driver_->refresh();
    ASSERT_TRUE(driver_->waitForRow(u"größer  als"_s));
    driver_->rename(u"größer  als"_s, u"kleiner"_s);
    EXPECT_GE(driver_->rowOf(u"größer  als"_s), 0) << "the list waits for the server";
    driver_->press(Qt::Key_F5);
    ASSERT_TRUE(driver_->waitForRow(u"kleiner"_s));
    driver_->select(u"kleiner"_s);
    driver_->press(Qt::Key_Delete);
    EXPECT_EQ(driver_->answer(QMessageBox::No), u"Are u sure u want to delete this directory:\nkleiner"_s);
    driver_->press(Qt::Key_Delete);
    driver_->answer(QMessageBox::Yes);
    driver_->refresh();
    EXPECT_TRUE(driver_->waitForNoRow(u"kleiner"_s));
    EXPECT_TRUE(eventually([&] { return text("txtBrowserCmdReply_1").contains(u"] > RMD kleiner"_s); }));
}

class HugeDirectory : public DemoSites {
  protected:
    HugeDirectory() : DemoSites({.entries = 200000, .chunkBytes = 0}) {}
};

TEST_F(HugeDirectory, IsListedWhileTheOtherSiteGoesOn) {
    ASSERT_TRUE(driver_->logIn(1));
    ASSERT_TRUE(driver_->logIn(2));
    ASSERT_TRUE(driver_->waitForRow(u"big"_s));
    driver_->doubleClick(u"big"_s);
    driver_->window->program().sendConsoleCommand(2, "SYST");
    EXPECT_TRUE(eventually([&] { return text("txtLogFTP_2").contains(u"215 "_s); }));
    EXPECT_TRUE(eventually([&] { return driver_->session(1).browser.listing.fileCount == 200000; }));
    ReportView& list = driver_->browser();
    const auto isShown = [&] {
        return driver_->isIdle(1) && driver_->path() == u"/big"_s && list.model()->rowCount() > 200000;
    };
    ASSERT_TRUE(eventually(isShown));

    // A person's widths outlive a click on a header and a resize, the place and the selection a refresh.
    list.header()->resizeSection(0, 111);
    list.header()->resizeSection(1, 222);
    emit list.headerClicked(1);
    driver_->window->resize(driver_->window->size() + QSize(50, 0));
    QCoreApplication::processEvents();
    EXPECT_EQ(list.columnWidth(0), 111);
    EXPECT_EQ(list.columnWidth(1), 222);
    list.setCurrentRow(1005);
    list.verticalScrollBar()->setValue(1000);
    const QString selected = list.currentIndex().data().toString();
    const std::uint64_t shown = driver_->session(1).browser.listings;
    driver_->press(Qt::Key_F5);
    ASSERT_TRUE(eventually([&] { return driver_->session(1).browser.listings > shown && isShown(); }));
    EXPECT_EQ(list.currentIndex().data().toString(), selected);
    EXPECT_EQ(list.verticalScrollBar()->value(), 1000);

    // Rows of a directory that is being left look as if they were disabled, and open no editor.
    const QImage usable = list.viewport()->grab().toImage();
    driver_->window->program().browser().root(1);
    EXPECT_NE(list.viewport()->grab().toImage(), usable);
    driver_->press(Qt::Key_F2);
    EXPECT_EQ(list.viewport()->findChild<QLineEdit*>(), nullptr);
}

} // namespace
} // namespace corvel::test

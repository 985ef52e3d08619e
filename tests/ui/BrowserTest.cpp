#include "browser/BrowserCommands.h"
#include "net/qt/wSock.h"
#include "ui/WindowDriver.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

// Logged in as a master, in "/pub".
class BrowserDialogs : public DemoWindow {
  protected:
    void SetUp() override {
        startOn(browserTab,
                "site_nuke_syntax = site nuke %(name) %(mult) %(reason)\nsite_nuke_replace_spaces = _\n");
        enter(u"pub"_s);
    }

    void enter(const QString& name) {
        ASSERT_TRUE(driver_->waitForRow(name));
        driver_->doubleClick(name);
        ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && driver_->rowOf(name) < 0; }));
    }

    // Selects a row and opens its dialog by the command of a menu.
    Driver open(const QString& row, const char* command) {
        driver_->select(row);
        driver_->run(command);
        return Driver(*driver_->window->findChild<QDialog*>());
    }

    // Opens the CHATTR dialog, and waits until it can be confirmed.
    Driver openChattr(const QString& row) {
        Driver dialog = open(row, "chattr");
        EXPECT_TRUE(eventually([&] { return dialog.find<QPushButton>("Command1").isEnabled(); }));
        return dialog;
    }

    void waitForClose() { ASSERT_TRUE(driver_->waitForNoDialog() && driver_->waitForIdle()); }

    // What was sent to the server, and its answers, since the last call; without the times.
    std::string replies() {
        const QString all = QString::fromStdString(driver_->session(1).browserReplyLog.text());
        QString added = all.mid(std::exchange(repliesRead_, all.size()));
        return added.remove(QRegularExpression(u"\\[[0-9][^]]*\\] |\r"_s)).toStdString();
    }

    qsizetype repliesRead_ = 0;
};

TEST_F(BrowserDialogs, SetPermissions) {
    Driver dialog = open(u"say \"hello\".txt"_s, "chmod");
    EXPECT_EQ(dialog.text("txtCHMODval"), u"644"_s);
    dialog.setText("txtCHMODval", u"751"_s);
    dialog.press("chkX_8", Qt::Key_Space);
    // The entry is the one that was selected, even if the list shows another directory by now.
    driver_->window->program().browser().root(1);
    ASSERT_TRUE(driver_->waitForNoRow(u"tools"_s));
    dialog.press("txtCHMODval", Qt::Key_Return);
    waitForClose();
    EXPECT_EQ(replies(), "> SITE chmod 750 /pub/say \"hello\".txt\n200 SITE CHMOD command successful");
}

TEST_F(BrowserDialogs, HideADirectory) {
    Driver dialog = openChattr(u"empty"_s);
    EXPECT_EQ(dialog.text("txtCurrent"), u"<not set>"_s);
    dialog.clickRow("lstUsers", 2);
    dialog.clickRow("lstUsers", 0);
    dialog.clickRow("lstGroups", 1);
    dialog.press("lstGroups", Qt::Key_Return);
    waitForClose();
    const SiteSession& session = driver_->session(1);
    const std::string arguments =
        "-" + session.Users[0].sName + " -" + session.Users[2].sName + " =" + session.Groups[1].sName;
    EXPECT_EQ(replies(), "> site chattr +h \"empty\" \" " + arguments + "\"\n200 CHATTR command successful");

    // An answer that comes after its dialog was closed is not taken for the next one's.
    open(u"empty"_s, "chattr").press("lstUsers", Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Driver next = openChattr(u"two  blanks"_s);
    EXPECT_EQ(next.text("txtCurrent"), u"<not set>"_s);
    next.click("Command1");
    waitForClose();
    EXPECT_EQ(replies(), "");
}

TEST_F(BrowserDialogs, HideNothingBeforeTheServerHasAnswered) {
    auto& socket = dynamic_cast<wSock&>(*driver_->window->program().site(1).wSock);
    socket.blockSignals(true); // nothing is heard of the server from here on
    Driver dialog = open(u"empty"_s, "chattr");
    dialog.press("lstUsers", Qt::Key_Return);
    driver_->chooseSitesMenu(1);
    socket.blockSignals(false);
    ASSERT_TRUE(driver_->logIn(1));
    EXPECT_FALSE(dialog.find<QPushButton>("Command1").isEnabled()) << "the answer was lost";
    dialog.press("lstUsers", Qt::Key_Escape);
    waitForClose();

    enter(u"pub"_s);
    driver_->window->program().browser().send(1, {fileCommand("RMD ", "empty")});
    ASSERT_TRUE(driver_->waitForIdle());
    Driver refused = openChattr(u"empty"_s);
    EXPECT_TRUE(refused.text("txtCurrent").startsWith(u"550 empty"_s));
    replies();
    refused.click("Command1");
    refused.answer(QMessageBox::No); // it would clear what nobody has seen
    EXPECT_EQ(replies(), "");
    refused.click("Command1");
    refused.answer(QMessageBox::Yes);
    waitForClose();
    EXPECT_TRUE(replies().starts_with("\n> site chattr -h \"empty\"\n"));
}

TEST_F(BrowserDialogs, NukeARelease) {
    Driver dialog = open(u"Holiday pictures"_s, "nuke");
    dialog.setText("txtMultip", u"3"_s);
    dialog.press("txtMultip", Qt::Key_Return);
    dialog.setText("txtReason", u"bad release"_s);
    dialog.press("txtReason", Qt::Key_Enter);
    waitForClose();
    EXPECT_TRUE(replies().starts_with("> site nuke Holiday pictures 3 bad_release\n"
                                      "200-NUKE of Holiday pictures: bad_release\n"));
}

TEST_F(BrowserDialogs, FilterGoUpAndUseTheMenu) {
    ReportView& list = driver_->browser();
    const int all = list.rowsInAll();
    QTest::keyClick(driver_->window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"EMPT"_s);
    const auto count = [&] { return driver_->find<QLabel>("lblBrowserCount").text(); };
    EXPECT_EQ(count(), u"1 of %1"_s.arg(all));
    EXPECT_EQ(driver_->rowOf(u".."_s), 0) << "that one stays";
    list.setCurrentRow(0);
    driver_->press("txtBrowserFilter", Qt::Key_Down);
    EXPECT_EQ(list.currentIndex().row(), driver_->rowOf(u"empty"_s)) << "and is not what was looked for";
    list.selectAll();
    EXPECT_EQ(list.selectedRows().size(), 2U);
    emit list.headerClicked(0);
    driver_->refresh();
    EXPECT_EQ(count(), u"1 of %1"_s.arg(all));

    driver_->press(Qt::Key_Backspace);
    ASSERT_TRUE(driver_->waitForRow(u"pub"_s) && driver_->waitForIdle());
    EXPECT_EQ(list.currentRow(), driver_->rowOf(u"pub"_s));
    EXPECT_FALSE(count().contains(u"of"_s)) << "a navigation takes the filter along";
    driver_->setText("txtBrowserPWD_1", u"/nowhere"_s);
    driver_->press("txtBrowserPWD_1", Qt::Key_Return);
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && driver_->path() == u"/"_s; }));

    driver_->press("txtBrowserPWD_1", Qt::Key_Return);
    ASSERT_TRUE(driver_->waitForRow(u"pub"_s) && driver_->waitForIdle());
    driver_->select(u"pub"_s);
    auto* const hide = driver_->window->findChild<QAction*>(u"mnuBrowserHide"_s);
    EXPECT_TRUE(hide->isEnabled());
    driver_->window->findChild<QAction*>(u"mnuBrowserCopyPath"_s)->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), u"/pub"_s);
    driver_->showTab(usersTab);
    driver_->window->findChild<QAction*>(u"mnuBrowserDelete"_s)->trigger();
    EXPECT_EQ(driver_->window->findChild<QMessageBox*>(), nullptr) << "of rows that nobody sees";
}

class DemoSites : public DemoWindow {
  protected:
    DemoSites() : DemoWindow({.entries = 200000, .chunkBytes = 0}) { start(); }

    QString text(const char* name) { return driver_->find<QPlainTextEdit>(name).toPlainText(); }
};

TEST_F(DemoSites, GoOnWhileAHugeDirectoryIsListed) {
    ASSERT_TRUE(driver_->logIn(1));
    ASSERT_TRUE(driver_->logIn(2));
    ASSERT_TRUE(driver_->waitForRow(u"big"_s));
    driver_->doubleClick(u"big"_s);
    auto& command = driver_->find<QLineEdit>("txtSendFTP_2");
    QTest::keyClicks(&command, u"SYST"_s);
    QTest::keyClick(&command, Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return text("txtLogFTP_2").contains(u" 215 "_s); }));
    EXPECT_TRUE(text("txtLogFTP_2").contains(u"> SYST\n"_s));
    EXPECT_FALSE(text("txtLogFTP_2").contains(u"PASS demo"_s));
    EXPECT_FALSE(text("txtLogFTP_1").contains(u"SYST"_s));
    EXPECT_TRUE(eventually([&] { return driver_->session(1).browser.listing.fileCount == 200000; }));
    ReportView& list = driver_->browser();
    const auto isShown = [&] {
        return driver_->isIdle(1) && driver_->path() == u"/big"_s && list.model()->rowCount() > 200000;
    };
    ASSERT_TRUE(eventually(isShown));

    // The place and the selection outlive a refresh.
    list.setCurrentRow(1005);
    list.verticalScrollBar()->setValue(1000);
    const QString selected = list.currentIndex().data().toString();
    const std::uint64_t shown = driver_->session(1).browser.listings;
    driver_->press(Qt::Key_F5);
    ASSERT_TRUE(eventually([&] { return driver_->session(1).browser.listings > shown && isShown(); }));
    EXPECT_EQ(list.currentIndex().data().toString(), selected);
    EXPECT_EQ(list.verticalScrollBar()->value(), 1000);

    // Rows of a directory that is being left open no editor.
    driver_->window->program().browser().root(1);
    driver_->press(Qt::Key_F2);
    EXPECT_EQ(list.viewport()->findChild<QLineEdit*>(), nullptr);

    const QAbstractItemModel& sites = *driver_->find<QAbstractItemView>("lvwSites").model();
    const QString connected = u"Connected (127.0.0.1:%1)"_s.arg(server_.port());
    EXPECT_TRUE(eventually([&] { return sites.index(1, 1).data().toString() == connected; }));
    driver_->chooseSitesMenu(1);
    EXPECT_TRUE(eventually([&] { return sites.index(1, 1).data().toString() == u"Socket closed"_s; }));
    EXPECT_EQ(sites.index(0, 1).data().toString(), connected);
}

} // namespace
} // namespace corvel::test

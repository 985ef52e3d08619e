#include "ui/DemoWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <map>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

// Answers every line by itself. The line held gets no answer before release.
class LineServer : public QTcpServer {
  public:
    LineServer() {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            client_ = nextPendingConnection();
            client_->write("220 ready\r\n");
            connect(client_, &QTcpSocket::readyRead, this, &LineServer::serve);
        });
    }

    void release() { client_->write(answerTo(std::exchange(held, {}))); }
    void hangUp() { client_->disconnectFromHost(); }

    QByteArray other = "200 ok\r\n";
    std::map<QByteArray, QByteArray> answers = {{"USER u", "331 password\r\n"}, {"PASS p", "230 in\r\n"}};
    QByteArray held;
    QByteArrayList lines;

  private:
    QByteArray answerTo(const QByteArray& line) { return answers.contains(line) ? answers.at(line) : other; }
    void serve() {
        while (client_->canReadLine()) {
            lines.push_back(client_->readLine().chopped(2));
            if (lines.back() != held) {
                client_->write(answerTo(lines.back()));
            }
        }
    }

    QTcpSocket* client_ = nullptr;
};

constexpr const char* userTable = "200- | 1 | ann | staff | 3\r\n200- | 2 | ben | staff | 3\r\n"
                                  "200- | 3 | cid | staff | 3\r\n200 end\r\n";

// The users tab over a site of such a server.
class AccountServers : public testing::Test {
  protected:
    AccountServers() {
        server_.answers["SITE CorvelExt usertable"] = userTable;
        server_.answers["SITE CorvelExt grouptable"] = "200- | 1 | staff | 3\r\n200 end\r\n";
        EXPECT_TRUE(demo_.listen());
        driver_ = std::make_unique<WindowDriver>(siteRecord("other", server_.serverPort(), "u", "p") +
                                                 siteRecord("demo", demo_.port(), "demo", "demo"));
        driver_->showTab(usersTab);
    }

    bool logIn() {
        driver_->chooseSitesMenu(0);
        return eventually([&] { return driver_->session(1).bLoggedIn && driver_->isIdle(1); });
    }
    ReportView& list() { return driver_->find<ReportView>("lvwUsers_1"); }
    QString progress() { return driver_->find<QLabel>("lblBatchProgress").text(); }
    // Starts a batch over the three users of the server, which keeps the line for ben unanswered.
    void startBatch() {
        list().selectAll();
        driver_->click("cmdUserBatch");
        driver_->find<QCheckBox>("chkBatchTagLine").setChecked(true);
        driver_->setText("txtBatchTagline", u"hi"_s);
        server_.held = "site change ben tagline hi";
        driver_->click("cmdBatchPerform");
        ASSERT_TRUE(eventually([&] { return server_.lines.back() == server_.held; }));
    }

    LineServer server_;
    DemoServer demo_{DemoOptions{}};
    std::unique_ptr<WindowDriver> driver_;
};

TEST_F(AccountServers, ThatRefuseEverythingAreExplainedAndHarmNothing) {
    EXPECT_EQ(list().accessibleDescription(), u"Not connected."_s);
    server_.answers.erase("SITE CorvelExt usertable");
    server_.answers.erase("SITE CorvelExt grouptable");
    server_.other = "500 Unknown command.\r\n";
    server_.held = "SITE CorvelExt usertable";
    driver_->chooseSitesMenu(0);
    ASSERT_TRUE(eventually(
        [&] { return list().accessibleDescription() == u"The server has not sent its users yet."_s; }));
    server_.release();
    ASSERT_TRUE(eventually([&] {
        return driver_->isIdle(1) && list().accessibleDescription() ==
                                         u"The server did not send its users:\n500 Unknown command."_s;
    }));
    EXPECT_EQ(driver_->find<ReportView>("lvwGroups_1").accessibleDescription(),
              u"The server did not send its groups:\n500 Unknown command."_s);
    const auto sent = server_.lines.size();
    for (const char* const button : {"cmdUserSaveChanges", "cmdReloadUserfile", "cmdUserResetPWD",
                                     "cmdUserAddDelIp_0", "cmdUserEditGroups", "cmdUserCopy", "cmdUserBatch",
                                     "cmdBatchPerform", "cmdGroupSaveChanges", "cmdReloadGroupfile"}) {
        driver_->find<QPushButton>(button).click();
    }
    QTest::keyClick(&list(), Qt::Key_Delete);
    driver_->click("cmdUserReloadTable");
    ASSERT_TRUE(eventually([&] { return server_.lines.size() > sent && driver_->isIdle(1); }));
    EXPECT_EQ(server_.lines.size(), sent + 1) << "only the reload goes out";
    EXPECT_EQ(driver_->window->findChild<QDialog*>(), nullptr);
}

TEST_F(AccountServers, ShowHowFarTheBatchIsUntilTheyAreLost) {
    ASSERT_TRUE(logIn());
    EXPECT_EQ(progress(), QString());
    startBatch();
    EXPECT_TRUE(eventually([&] { return progress() == u"batch: 2 of 3"_s; }));
    server_.release();
    ASSERT_TRUE(eventually([&] { return progress().isEmpty() && driver_->isIdle(1); }));
    EXPECT_EQ(server_.lines.back(), QByteArray("site change cid tagline hi"));
    EXPECT_NE(driver_->session(1).commandResultsLog.text().find("[ END ]"), std::string::npos);

    server_.held = "site change ben tagline hi";
    driver_->click("cmdBatchPerform");
    ASSERT_TRUE(eventually([&] { return server_.lines.back() == server_.held; }));
    driver_->click("cmdUserAdd");
    auto* const dialog = driver_->waitForBox<QDialog>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>(u"txtUserName"_s)->setText(u"new"_s);
    dialog->findChild<QLineEdit*>(u"txtPassword"_s)->setText(u"secret"_s);
    dialog->findChild<QComboBox*>(u"txtMainGroup"_s)->setCurrentIndex(0);
    dialog->findChild<QPushButton*>(u"cmdUserAddDelIp_0"_s)->click();
    server_.hangUp();
    ASSERT_TRUE(eventually([&] { return !driver_->session(1).bLoggedIn && progress().isEmpty(); }));
    EXPECT_EQ(list().accessibleDescription(), u"Not connected."_s);
    dialog->findChild<QPushButton*>(u"cmdOK"_s)->click();
    EXPECT_EQ(driver_->answer(QMessageBox::Ok), u"Command not sent: the site is not connected"_s);
    EXPECT_TRUE(dialog->isVisible());
    QTest::keyClick(dialog, Qt::Key_Escape);
}

TEST_F(AccountServers, ThatAnswerLateDoNotTakeTheEditorFromAnother) {
    ASSERT_TRUE(logIn());
    server_.held = "SITE CorvelExt userfile 2";
    server_.answers[server_.held] = "200-tagline | late\r\n200 end\r\n";
    driver_->clickRow("lvwUsers_1", 1, u"ben"_s);
    ASSERT_TRUE(eventually([&] { return server_.lines.back() == server_.held; }));
    driver_->click("cmdUserSaveChanges");
    driver_->click("cmdUserAddDelIp_0");
    ASSERT_TRUE(driver_->logIn(2));
    driver_->clickRow("lvwUsers_2", 1, u"carol"_s);
    ASSERT_TRUE(eventually([&] { return driver_->isIdle(2) && driver_->text("txtUserName") == u"carol"_s; }));
    server_.release();
    ASSERT_TRUE(driver_->waitForIdle());
    EXPECT_EQ(server_.lines.back(), QByteArray("SITE CorvelExt userfile 2")) << "nothing was known to save";
    EXPECT_EQ(driver_->text("txtUserName"), u"carol"_s);
    driver_->window->program().selectSite(1);
    EXPECT_EQ(driver_->text("txtUserName"), u"ben"_s);
    EXPECT_EQ(driver_->text("txtUserTagLine"), u"late"_s);
}

} // namespace
} // namespace corvel::test

#include "real/RealServer.h"
#include "ui/WindowDriver.h"

#include <QDir>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

// Corvel's window on a server that nobody here wrote.
class RealServers : public testing::TestWithParam<ServerKind> {
  protected:
    QStringList onDisk(const QString& directory) const {
        return QDir(server_.localPath() + directory)
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    }

    QString serverPath(const QString& directory) const {
        return QString::fromStdString(server_.serverPath()) + directory;
    }

    bool arrivesAt(const QString& directory) {
        return eventually([&] { return driver_.isIdle(1) && driver_.path() == serverPath(directory); });
    }

    // Logs in and walks into the directory work, wherever the server says that it is.
    void goToWork() {
        ASSERT_TRUE(driver_.logIn(1))
            << driver_.find<QPlainTextEdit>("txtLogFTP_1").toPlainText().toStdString();
        driver_.window->program().sendConsoleCommand(1, "CWD " + server_.serverPath());
        driver_.refresh();
        ASSERT_TRUE(arrivesAt(u""_s));
        ASSERT_TRUE(driver_.waitForRow(u"My Docs"_s));
    }

    RealServer server_{GetParam()};
    WindowDriver driver_{siteRecord("real", server_.port(), std::string(server_.userName()),
                                    std::string(RealServer::password)),
                         "listing_merge_blanks = 1\n"};
};

INSTANTIATE_TEST_SUITE_P(Kinds, RealServers, testing::Values(ServerKind::proftpd, ServerKind::vsftpd),
                         [](const auto& test) {
                             return test.param == ServerKind::proftpd ? "ProFTPD" : "vsftpd";
                         });

TEST_P(RealServers, ListsAndWalksTheTree) {
    goToWork();
    const QAbstractItemModel& model = *driver_.browser().model();
    const int old = driver_.rowOf(u"old.txt"_s);
    ASSERT_GE(old, 0);
    EXPECT_EQ(model.index(old, 2).data().toString().right(4), u"2020"_s);
    EXPECT_GE(driver_.rowOf(u"Grüße.txt"_s), 0);

    driver_.doubleClick(u"My Docs"_s);
    ASSERT_TRUE(arrivesAt(u"/My Docs"_s));
    ASSERT_TRUE(driver_.waitForRow(u"letter.txt"_s));
    driver_.doubleClick(u".."_s);
    ASSERT_TRUE(arrivesAt(u""_s));
    ASSERT_TRUE(driver_.waitForRow(u"link -> dir"_s));
    driver_.doubleClick(u"link -> dir"_s);
    ASSERT_TRUE(driver_.waitForRow(u"inner.txt"_s));
}

TEST_P(RealServers, ChangesTheTree) {
    goToWork();
    driver_.doubleClick(u"My Docs"_s);
    ASSERT_TRUE(driver_.waitForRow(u"letter.txt"_s));

    driver_.press(Qt::Key_Insert);
    driver_.answerText(u"new dir"_s);
    driver_.refresh();
    ASSERT_TRUE(driver_.waitForRow(u"new dir"_s));
    driver_.rename(u"new dir"_s, u"old dir"_s);
    driver_.refresh();
    ASSERT_TRUE(driver_.waitForRow(u"old dir"_s));
    EXPECT_EQ(onDisk(u"/My Docs"_s), (QStringList{u"letter.txt"_s, u"old dir"_s}));

    driver_.select(u"letter.txt"_s);
    driver_.press(Qt::Key_Delete);
    EXPECT_EQ(driver_.answer(QMessageBox::Yes), u"Are u sure u want to delete this file:"_s);
    driver_.refresh();
    driver_.select(u"old dir"_s);
    driver_.press(Qt::Key_Delete);
    EXPECT_EQ(driver_.answer(QMessageBox::Yes), u"Are u sure u want to delete this directory:\nold dir"_s);
    driver_.refresh();
    ASSERT_TRUE(driver_.waitForNoRow(u"old dir"_s));
    EXPECT_EQ(onDisk(u"/My Docs"_s), QStringList());

    driver_.chooseSitesMenu(1);
    EXPECT_FALSE(driver_.session(1).bLoggedIn);
}

TEST_P(RealServers, SaysWhyALoginIsRefused) {
    WindowDriver stranger(siteRecord("real", server_.port(), std::string(server_.userName()), "wrong"));
    stranger.chooseSitesMenu(0);
    EXPECT_TRUE(eventually([&] {
        return stranger.find<QPlainTextEdit>("txtLogFTP_1").toPlainText().contains(u"530 Login incorrect."_s);
    }));
    EXPECT_FALSE(stranger.session(1).bLoggedIn);
}

TEST(RealServer, EndsWithItsSessions) {
    for (const ServerKind kind : {ServerKind::proftpd, ServerKind::vsftpd}) {
        QTcpSocket session;
        std::uint16_t port = 0;
        {
            const RealServer server(kind);
            port = server.port();
            session.connectToHost(QHostAddress::LocalHost, port);
            ASSERT_TRUE(session.waitForConnected(5000) && session.waitForReadyRead(5000));
        }
        EXPECT_TRUE(session.state() == QAbstractSocket::UnconnectedState ||
                    session.waitForDisconnected(5000));
        QTcpSocket late;
        late.connectToHost(QHostAddress::LocalHost, port);
        EXPECT_FALSE(late.waitForConnected(5000));
    }
}

} // namespace
} // namespace corvel::test

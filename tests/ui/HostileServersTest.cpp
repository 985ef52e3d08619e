#include "demo/DemoServer.h"
#include "ui/WindowDriver.h"

#include <QPlainTextEdit>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

// Greets whoever connects with the same bytes, and hangs up if it is told to.
class Peer : public QTcpServer {
  public:
    Peer(QByteArray bytes, bool hangsUp) : bytes_(std::move(bytes)), hangsUp_(hangsUp) {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* const client = nextPendingConnection();
            client->write(bytes_);
            if (hangsUp_) {
                client->disconnectFromHost();
            }
        });
    }

  private:
    QByteArray bytes_;
    bool hangsUp_;
};

// Every byte value, some of them many times, in an order that repeats: nothing of it is a reply.
QByteArray rubbish() {
    QByteArray bytes;
    unsigned state = 1;
    for (int i = 0; i < 5000; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24U);
    }
    return bytes;
}

struct HostileCase {
    const char* name;
    QByteArray bytes;
    bool hangsUp;
    QString said; // on the console, in the end
};

TEST(HostileServers, LeaveTheWindowAndTheOtherSiteAlone) {
    const QString closed = u"----------- connection closed -----------"_s;
    const std::vector<HostileCase> cases = {
        {"hangs up at once", "", true, u"wSock_Close()"_s},
        {"cut in the middle of a reply", "220-hello\r\n220 rea", true, closed},
        {"binary rubbish", rubbish(), true, closed},
        {"an endless line", QByteArray(100000, 'x'), false, u"Reply line of more than 64 KiB"_s},
        {"refuses the service", "421 too many\r\n", true, u"421 too many"_s},
        {"escape sequences",
         "421-\x1B[31mred\xE2\x80\xAE"
         "evil\r\n421 x\r\n",
         true, u"421-\u241B[31mred<U+202e>evil"_s},
    };
    DemoServer demo(DemoOptions{});
    ASSERT_TRUE(demo.listen());
    for (const HostileCase& row : cases) {
        Peer peer(row.bytes, row.hangsUp);
        WindowDriver driver(siteRecord("good", demo.port(), "demo", "demo") +
                            siteRecord("bad", peer.serverPort(), "bob", "secret"));
        ASSERT_TRUE(driver.logIn(1)) << row.name;
        driver.window->program().connectSite(2);
        auto& console = driver.find<QPlainTextEdit>("txtLogFTP_2");
        EXPECT_TRUE(eventually([&] { return console.toPlainText().contains(row.said); }))
            << row.name << ": " << console.toPlainText().toStdString();
        EXPECT_TRUE(eventually([&] {
            return driver.window->program().site(2).wSock->state() == SocketState::closed;
        })) << row.name;
        EXPECT_TRUE(eventually([&] { return console.toPlainText().contains(closed); })) << row.name;
        EXPECT_EQ(console.toPlainText().count(closed), 1) << row.name;
        EXPECT_TRUE(driver.session(1).bLoggedIn) << row.name;
        driver.refresh();
        EXPECT_TRUE(driver.waitForRow(u"pub"_s)) << row.name;
    }
}

// A test of its own, because Wine does not report this end.
TEST(HostileServers, HangingUpWhileTheLoginIsOnItsWayIsNoticed) {
    Peer peer("220 x\r\n", true);
    WindowDriver driver(siteRecord("bad", peer.serverPort(), "bob", "secret"));
    driver.window->program().connectSite(1);
    auto& console = driver.find<QPlainTextEdit>("txtLogFTP_1");
    EXPECT_TRUE(eventually([&] { return console.toPlainText().contains(u"connection closed"_s); }))
        << console.toPlainText().toStdString();
}

TEST(HostileServers, AnUnreachableHostIsNamedOnTheConsole) {
    QTcpServer nobody;
    nobody.listen(QHostAddress::LocalHost);
    const int port = nobody.serverPort();
    nobody.close();
    WindowDriver driver(siteRecord("away", port, "bob", "secret"));
    driver.chooseSitesMenu(0);
    const auto& console = driver.find<QPlainTextEdit>("txtLogFTP_1");
    EXPECT_TRUE(eventually([&] { return console.toPlainText().contains(u"connection closed"_s); }));
    EXPECT_TRUE(console.toPlainText().contains(u"wSock_Error() -> "_s));
}

} // namespace
} // namespace corvel::test

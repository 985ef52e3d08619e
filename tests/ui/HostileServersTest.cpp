#include "demo/DemoServer.h"
#include "ui/WindowDriver.h"

#include <QPlainTextEdit>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <numeric>
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

TEST(HostileServers, LeaveTheWindowAndTheOtherSiteAlone) {
    const QString closed = u"----------- connection closed -----------"_s;
    struct Row {
        const char* name;
        QByteArray bytes;
        bool hangsUp;
        QString said; // on the console, in the end
    };
    QByteArray everyByte(256, '\0');
    std::iota(everyByte.begin(), everyByte.end(), '\0');
    const std::vector<Row> rows = {
        {"hangs up at once", "", true, u"wSock_Close()"_s},
        {"cut in the middle of a reply", "220-hello\r\n220 rea", true, closed},
        {"every byte", everyByte.repeated(20), true, closed},
        {"an endless line", QByteArray(100000, 'x'), false, u"Reply line of more than 64 KiB"_s},
        {"refuses the service", "421 too many\r\n", true, u"421 too many"_s},
        {"escape sequences",
         "421-\x1B[31mred\xE2\x80\xAE"
         "evil\r\n421 x\r\n",
         true, u"421-\u241B[31mred<U+202e>evil"_s},
    };
    DemoServer demo(DemoOptions{});
    ASSERT_TRUE(demo.listen());
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Peer peer(row.bytes, row.hangsUp);
        WindowDriver driver(siteRecord("good", demo.port(), "demo", "demo") +
                            siteRecord("bad", peer.serverPort(), "bob", "secret"));
        ASSERT_TRUE(driver.logIn(1));
        driver.window->program().connectSite(2);
        auto& console = driver.find<QPlainTextEdit>("txtLogFTP_2");
        EXPECT_TRUE(eventually([&] { return console.toPlainText().contains(row.said); }))
            << console.toPlainText().toStdString();
        EXPECT_TRUE(eventually(
            [&] { return driver.window->program().site(2).wSock->state() == SocketState::closed; }));
        EXPECT_EQ(console.toPlainText().count(closed), 1);
        EXPECT_TRUE(driver.session(1).bLoggedIn);
        driver.refresh();
        EXPECT_TRUE(driver.waitForRow(u"pub"_s));
    }
}

} // namespace
} // namespace corvel::test

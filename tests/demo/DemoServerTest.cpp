#include "demo/DemoServer.h"

#include "ui/WindowDriver.h"

#include <QTcpSocket>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace corvel {
namespace {

using test::eventually;

class Client {
  public:
    explicit Client(const DemoServer& server) {
        QObject::connect(&socket_, &QTcpSocket::readyRead, [this] {
            ++arrivals_;
            received += socket_.readAll().toStdString();
        });
        socket_.connectToHost(QStringLiteral("127.0.0.1"), server.port());
    }

    void send(const std::string& bytes) { socket_.write(bytes.data(), static_cast<qint64>(bytes.size())); }

    bool hasReceived(const std::string& text) { return received.find(text) != std::string::npos; }

    bool waitForText(const std::string& text) {
        return eventually([&] { return hasReceived(text); });
    }

    bool waitForClose() {
        return eventually([&] { return socket_.state() == QAbstractSocket::UnconnectedState; });
    }

    bool logIn() {
        send("USER demo\r\nPASS demo\r\n");
        return waitForText("\r\n230 ");
    }

    void vanish() { socket_.abort(); }
    int arrivals() const { return arrivals_; }

    std::string received;

  private:
    QTcpSocket socket_;
    int arrivals_ = 0;
};

std::unique_ptr<DemoServer> startServer(const DemoOptions& options = {}) {
    auto server = std::make_unique<DemoServer>(options);
    EXPECT_TRUE(server->listen()) << server->errorText().toStdString();
    EXPECT_NE(server->port(), 0);
    return server;
}

TEST(DemoServer, SendsTheSameBytesInPiecesOfAnySize) {
    const std::string commands =
        "USER demo\r\nPASS demo\r\nCWD /pub\r\nSTAT -a\r\nHELP\r\nSITE FROB\r\nQUIT\r\n";
    std::string whole;
    for (const int chunkBytes : {0, 1, 7, 1460}) {
        const auto server = startServer({.chunkBytes = chunkBytes});
        Client client(*server);
        client.send(commands);
        ASSERT_TRUE(client.waitForClose()) << chunkBytes;
        if (chunkBytes == 0) {
            whole = client.received;
            EXPECT_TRUE(client.hasReceived("221 Goodbye.\r\n"));
        }
        EXPECT_EQ(client.received, whole) << chunkBytes;
        // The system may join two pieces on their way, not a whole reply of kilobytes.
        if (chunkBytes == 7) {
            EXPECT_GE(client.arrivals(), static_cast<int>(whole.size()) / 7 / 4);
        }
    }
}

TEST(DemoServer, SurvivesAClientThatVanishesInMidReply) {
    for (const DemoOptions& options :
         {DemoOptions{.entries = 20'000}, DemoOptions{.entries = 2'000, .chunkBytes = 16},
          DemoOptions{.latencyMilliseconds = 5}}) {
        const auto server = startServer(options);
        Client staying(*server);
        Client vanishing(*server);
        ASSERT_TRUE(vanishing.logIn());
        vanishing.received.clear();
        vanishing.send("STAT -a /big\r\nSTAT -a /big\r\nSTAT -a /pub\r\n");
        ASSERT_TRUE(eventually([&] { return !vanishing.received.empty(); }));
        vanishing.vanish();
        EXPECT_TRUE(eventually([&] { return server->clientCount() == 1; }));
        EXPECT_TRUE(staying.logIn());
    }
}

TEST(DemoServer, AnswersRubbishOnceALineAndGoesOn) {
    const auto server = startServer();
    Client client(*server);
    client.send(std::string(300'000, '\xfe') + "\r\n");
    client.send("\x01\x02\x03\xff\r\n");
    ASSERT_TRUE(client.logIn());
    EXPECT_EQ(
        client.received.substr(0, client.received.find("331 ")),
        "220 Corvel demo server ready.\r\n500 Command line too long.\r\n500 Command not understood.\r\n");
}

TEST(DemoServer, TurnsClientsAwayPastItsLimit) {
    const auto server = startServer();
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < DemoServer::mostClients; ++i) {
        clients.push_back(std::make_unique<Client>(*server));
        ASSERT_TRUE(clients.back()->waitForText("220 ")) << i;
    }
    Client late(*server);
    EXPECT_TRUE(late.waitForClose());
    EXPECT_TRUE(late.hasReceived("421 "));
    clients.pop_back();
    ASSERT_TRUE(eventually([&] { return server->clientCount() == DemoServer::mostClients - 1; }));
    Client next(*server);
    EXPECT_TRUE(next.waitForText("220 "));
}

} // namespace
} // namespace corvel

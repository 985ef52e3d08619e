#include "demo/DemoServer.h"

#include "ui/WindowDriver.h"

#include <QTcpSocket>

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

using test::eventually;

// One client of a server.
struct Client {
    explicit Client(const DemoServer& server) {
        QObject::connect(&socket, &QTcpSocket::readyRead,
                         [this] { received += socket.readAll().toStdString(); });
        socket.connectToHost(QStringLiteral("127.0.0.1"), server.port());
    }

    void send(const std::string& bytes) { socket.write(bytes.data(), static_cast<qint64>(bytes.size())); }

    bool waitForText(const std::string& text) {
        return eventually([&] { return received.find(text) != std::string::npos; });
    }

    bool waitForClose() {
        return eventually([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
    }

    QTcpSocket socket;
    std::string received;
};

TEST(DemoServer, SendsTheSameBytesInPiecesOfAnySize) {
    std::string whole;
    for (const int chunkBytes : {0, 1, 1460}) {
        DemoServer server({.chunkBytes = chunkBytes});
        ASSERT_TRUE(server.listen());
        Client client(server);
        client.send("USER demo\r\nPASS demo\r\nCWD /pub\r\nSTAT -a\r\nHELP\r\nSITE FROB\r\nQUIT\r\n");
        ASSERT_TRUE(client.waitForClose()) << chunkBytes;
        EXPECT_TRUE(client.received.ends_with("221 Goodbye.\r\n")) << chunkBytes;
        whole = chunkBytes == 0 ? client.received : whole;
        EXPECT_EQ(client.received, whole) << chunkBytes;
    }
}

TEST(DemoServer, SurvivesAClientThatVanishesInMidReply) {
    for (const DemoOptions& options :
         {DemoOptions{.entries = 20'000},
          DemoOptions{.entries = 2'000, .latencyMilliseconds = 5, .chunkBytes = 16}}) {
        DemoServer server(options);
        ASSERT_TRUE(server.listen());
        Client staying(server);
        Client vanishing(server);
        vanishing.send("USER demo\r\nPASS demo\r\nSTAT -a /big\r\nSTAT -a /big\r\n");
        ASSERT_TRUE(vanishing.waitForText("211-"));
        vanishing.socket.abort();
        EXPECT_TRUE(eventually([&] { return server.clientCount() == 1; }));
        staying.send("USER demo\r\n");
        EXPECT_TRUE(staying.waitForText("331 "));
    }
}

TEST(DemoServer, AnswersRubbishOnceALineAndGoesOn) {
    DemoServer server({});
    ASSERT_TRUE(server.listen());
    Client client(server);
    client.send(std::string(300'000, '\xfe') + "\r\n" + std::string(4097, 'A') +
                "\n\x01\xff\r\nUSER demo\r\n");
    ASSERT_TRUE(client.waitForText("331 "));
    EXPECT_EQ(client.received.substr(0, client.received.find("331 ")),
              "220 Corvel demo server ready.\r\n500 Command line too long.\r\n500 Command line too long.\r\n"
              "500 Command not understood.\r\n");
}

} // namespace
} // namespace corvel

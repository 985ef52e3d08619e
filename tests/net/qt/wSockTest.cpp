#include "net/qt/wSock.h"

#include "demo/DemoServer.h"
#include "support/Tap.h"
#include "ui/WindowDriver.h"

#include <QNetworkProxy>
#include <QSignalSpy>
#include <QSslCertificate>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThreadPool>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvel {
namespace {

// A socket that is connected to a server in the same process.
class WSock : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(server_.listen(QHostAddress::LocalHost));
        socket_.Connect("127.0.0.1", server_.serverPort(), false);
        QSignalSpy arrived(&server_, &QTcpServer::newConnection);
        ASSERT_TRUE(server_.hasPendingConnections() || arrived.wait());
        peer_.reset(server_.nextPendingConnection());
        ASSERT_TRUE(connected_.size() == 1 || connected_.wait());
    }

    QTcpServer server_;
    wSock socket_;
    QSignalSpy connected_{&socket_, &wSock::connected};
    QSignalSpy data_{&socket_, &wSock::dataArrived};
    QSignalSpy closed_{&socket_, &wSock::closedByPeer};
    QSignalSpy failed_{&socket_, &wSock::failed};
    std::unique_ptr<QTcpSocket> peer_;
};

TEST_F(WSock, CarriesBytesBothWaysAndTellsTheEndBehindTheLastOfThem) {
    EXPECT_EQ(socket_.state(), SocketState::connected);
    EXPECT_EQ(socket_.remoteAddress(), "127.0.0.1");
    EXPECT_EQ(socket_.remotePort(), server_.serverPort());
    QSignalSpy received(peer_.get(), &QTcpSocket::readyRead);
    socket_.Send(std::string_view("NO\0OP\r\n", 7));
    ASSERT_TRUE(received.wait());
    EXPECT_EQ(peer_->readAll(), QByteArray("NO\0OP\r\n", 7));
    peer_->write("421 bye\r\n");
    peer_->disconnectFromHost();
    ASSERT_TRUE(closed_.wait());
    QByteArray all;
    for (const QList<QVariant>& piece : data_) {
        all += piece.front().toByteArray();
    }
    EXPECT_EQ(all, QByteArray("421 bye\r\n"));
    EXPECT_EQ(socket_.state(), SocketState::closed);
}

TEST_F(WSock, ClosesWithoutAWord) {
    peer_->write("220 unread\r\n");
    socket_.Close();
    QSignalSpy left(peer_.get(), &QTcpSocket::disconnected);
    EXPECT_TRUE(peer_->state() == QAbstractSocket::UnconnectedState || left.wait());
    EXPECT_EQ(socket_.state(), SocketState::closed);
    EXPECT_TRUE(data_.isEmpty() && closed_.isEmpty() && failed_.isEmpty());
    const quint16 port = server_.serverPort();
    server_.close();
    socket_.Connect("127.0.0.1", port, false);
    EXPECT_TRUE(failed_.isEmpty()) << "no event comes from inside a call";
    ASSERT_TRUE(failed_.wait());
    EXPECT_EQ(failed_.front()[1].toInt(), QAbstractSocket::ConnectionRefusedError);
}

// A proxy of the desktop's is none for control connections.
TEST(WSockProxy, IsNobodys) {
    QTcpServer server;
    QTcpServer proxy;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost) && proxy.listen(QHostAddress::LocalHost));
    QNetworkProxy::setApplicationProxy(
        {QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), proxy.serverPort()});
    QSignalSpy arrived(&server, &QTcpServer::newConnection);
    wSock socket;
    socket.Connect("127.0.0.1", server.serverPort(), false);
    EXPECT_TRUE(arrived.wait());
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_FALSE(proxy.hasPendingConnections());
}

// A connection to a demo server that encrypts from the first byte.
struct Encrypting {
    explicit Encrypting(qint64 bytes = -1) {
        tap = std::make_unique<test::Tap>(server.port(), "127.0.0.2", bytes);
        QObject::connect(&socket, &wSock::connected, &socket, [this] { socket.StartEncryption(trusted); });
    }

    // Until the handshake is over, or waits.
    void start() {
        socket.Connect("127.0.0.2", tap->serverPort(), true);
        EXPECT_TRUE(test::eventually(
            [this] { return encrypted.size() + doubted.size() + closed.size() + failed.size() > 0; }));
    }

    test::TrialServer server{{.tls = DemoTls::implicit}};
    std::unique_ptr<test::Tap> tap;
    std::string trusted = DemoServer::fingerprint();
    wSock socket;
    QSignalSpy encrypted{&socket, &wSock::encrypted};
    QSignalSpy doubted{&socket, &wSock::certificateDoubted};
    QSignalSpy data{&socket, &wSock::dataArrived};
    QSignalSpy closed{&socket, &wSock::closedByPeer};
    QSignalSpy failed{&socket, &wSock::failed};
};

TEST(WSockEncryption, GoesOnWithATrustedCertificateAlone) {
    Encrypting trusting;
    trusting.start();
    ASSERT_EQ(trusting.encrypted.size(), 1);
    // Of the two back-ends Schannel names no cipher.
    const bool isNamed = QSslSocket::activeBackend() == u"openssl"_s;
    EXPECT_EQ(trusting.socket.encryption().protocol, isNamed ? "TLS 1.3" : "TLS 1.2");
    EXPECT_EQ(trusting.socket.encryption().cipher.starts_with("TLS_"), isNamed);
    EXPECT_EQ(trusting.socket.encryption().chain.front().names, "localhost, 127.0.0.1");
    trusting.socket.Send("USER marker-7f3\r\n");
    EXPECT_TRUE(test::eventually([&] { return trusting.data.size() > 1; }));
    EXPECT_FALSE(trusting.tap->sent.contains("marker"));
    EXPECT_TRUE(trusting.socket.encryption().chain.front().subject.starts_with("CN=Corvel"));

    Encrypting doubting;
    doubting.trusted = "ab12";
    doubting.start();
    ASSERT_EQ(doubting.doubted.size(), 1);
    const auto problems = doubting.doubted[0][0].value<std::vector<std::string>>();
    for (const char* const problem : {"It is self-signed.", "It is for another name than 127.0.0.2."}) {
        EXPECT_EQ(std::ranges::count(problems, problem), 1) << problem;
    }
    EXPECT_EQ(doubting.socket.encryption().chain.front().fingerprint, DemoServer::fingerprint());
    EXPECT_TRUE(doubting.encrypted.isEmpty() && doubting.data.isEmpty());
    doubting.socket.AcceptCertificate();
    EXPECT_TRUE(test::eventually([&] { return doubting.data.size() > 0; }));
    EXPECT_EQ(doubting.encrypted.size(), 1);
}

TEST(WSockEncryption, IsForgottenWithItsConnection) {
    for (const bool isAccepted : {false, true}) {
        Encrypting connection;
        connection.trusted.clear();
        connection.start();
        if (isAccepted) {
            connection.socket.AcceptCertificate();
        }
        connection.socket.Close();
        QCoreApplication::processEvents();
        EXPECT_TRUE(connection.encrypted.isEmpty() && connection.failed.isEmpty());
        connection.doubted.clear();
        connection.start();
        EXPECT_EQ(connection.doubted.size(), 1);
        connection.socket.AcceptCertificate();
        EXPECT_TRUE(test::eventually([&] { return connection.data.size() > 0; }));
    }
}

TEST(WSockEncryption, MayGoWhileItsCertificateIsLookedAt) {
    {
        Encrypting connection;
        connection.trusted.clear();
        connection.socket.Connect("127.0.0.1", connection.server.port(), true);
        EXPECT_TRUE(test::eventually([&] { return !connection.socket.encryption().chain.empty(); }));
    }
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone());
    QCoreApplication::processEvents();
}

TEST(WSockEncryption, TellsWithTheAnswerThatThePeerHasLeft) {
    Encrypting connection;
    connection.trusted.clear();
    connection.start();
    connection.tap.reset();
    connection.socket.AcceptCertificate();
    EXPECT_TRUE(test::eventually([&] { return connection.closed.size() + connection.failed.size() > 0; }));
}

TEST(WSockEncryption, OfAHandshakeThatIsCutIsNone) {
    const auto certificateSize = DemoServer::certificate().toDer().size();
    for (qint64 bytes = 0;; bytes += 50) {
        Encrypting connection(bytes);
        connection.start();
        if (!connection.encrypted.isEmpty()) {
            EXPECT_GT(bytes, certificateSize);
            EXPECT_TRUE(
                test::eventually([&] { return connection.closed.size() + connection.failed.size() > 0; }));
            break;
        }
        EXPECT_EQ(connection.closed.size() + connection.failed.size(), 1) << bytes;
        EXPECT_TRUE(connection.data.isEmpty()) << bytes;
    }
}

TEST_F(WSock, DamagedAndClearBytesEndAHandshake) {
    for (const QByteArray& bytes :
         {QByteArray("\x16\x03\x03\xFF\xFF", 5) + QByteArray(70000, 'x'), QByteArray("220 hi\r\n")}) {
        connected_.clear();
        socket_.Connect("127.0.0.1", server_.serverPort(), true);
        ASSERT_TRUE(
            test::eventually([&] { return server_.hasPendingConnections() && !connected_.isEmpty(); }));
        peer_.reset(server_.nextPendingConnection());
        socket_.StartEncryption({});
        peer_->write(bytes);
        failed_.clear();
        ASSERT_TRUE(failed_.wait());
        EXPECT_TRUE(data_.isEmpty());
    }
}

} // namespace
} // namespace corvel

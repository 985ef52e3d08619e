#include "net/qt/wSock.h"

#include <QNetworkProxy>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <memory>

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

} // namespace
} // namespace corvel

#pragma once

#include "demo/DemoServer.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <optional>

namespace corvel::test {

// A server that can encrypt: the demo's in this process, or one outside, whose port the variable names. Wine
// can be the client of a TLS handshake alone.
class TrialServer {
  public:
    explicit TrialServer(const DemoOptions& options)
        : port_(qEnvironmentVariableIntValue(options.tls == DemoTls::implicit ? "CORVEL_IMPLICIT_TLS_PORT"
                                                                              : "CORVEL_EXPLICIT_TLS_PORT")) {
        if (port_ == 0) {
            server_.emplace(options);
            EXPECT_TRUE(server_->listen());
            port_ = server_->port();
        }
    }

    quint16 port() const { return static_cast<quint16>(port_); }

  private:
    int port_;
    std::optional<DemoServer> server_;
};

// Stands between a socket and a server, and hands on what goes by; no more than so
// many bytes of the server's, then it hangs up.
class Tap : public QTcpServer {
  public:
    explicit Tap(quint16 server, const char* address = "127.0.0.1", qint64 bytes = -1) {
        EXPECT_TRUE(listen(QHostAddress(QLatin1String(address))));
        connect(this, &QTcpServer::newConnection, this, [this, server, bytes] {
            QTcpSocket* const client = nextPendingConnection();
            auto* const peer = new QTcpSocket(client);
            peer->connectToHost(QHostAddress::LocalHost, server);
            connect(peer, &QTcpSocket::disconnected, client, &QTcpSocket::disconnectFromHost);
            connect(client, &QTcpSocket::readyRead, peer, [this, client, peer] {
                sent += client->peek(client->bytesAvailable());
                peer->write(client->readAll());
            });
            connect(peer, &QTcpSocket::readyRead, client, [this, client, peer, bytes] {
                const QByteArray all = peer->readAll();
                client->write(bytes < 0 ? all : all.left(bytes - received));
                received += all.size();
                if (bytes >= 0 && received >= bytes) {
                    client->disconnectFromHost();
                }
            });
        });
    }

    QByteArray sent;     // by the client
    qint64 received = 0; // from the server
};

} // namespace corvel::test

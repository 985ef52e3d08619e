#include "demo/DemoServer.h"

#include "demo/DemoConnection.h"

#include <QHostAddress>
#include <QTcpSocket>

namespace corvel {

DemoServer::DemoServer(const DemoOptions& options, QObject* parent)
    : QObject(parent), options_(options), world_(options.users, options.entries) {
    connect(&listener_, &QTcpServer::newConnection, this, &DemoServer::acceptClients);
}

// The connections look at the world, so they have to go first.
DemoServer::~DemoServer() {
    qDeleteAll(findChildren<DemoConnection*>(Qt::FindDirectChildrenOnly));
}

bool DemoServer::listen() {
    return listener_.listen(QHostAddress::LocalHost, options_.port);
}

QString DemoServer::errorText() const {
    return listener_.errorString();
}

std::uint16_t DemoServer::port() const {
    return listener_.serverPort();
}

void DemoServer::acceptClients() {
    while (QTcpSocket* socket = listener_.nextPendingConnection()) {
        if (clientCount_ == mostClients) {
            socket->write("421 Too many connections, try again later.\r\n");
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            socket->disconnectFromHost();
            continue;
        }
        ++clientCount_;
        auto* connection = new DemoConnection(socket, world_, options_, this);
        connect(connection, &DemoConnection::closed, this, [this, connection] {
            --clientCount_;
            connection->deleteLater();
        });
    }
}

} // namespace corvel

#include "ui/desktop/FrontDoor.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalSocket>
#include <QTimer>

#include <utility>

namespace corvel {

namespace {

constexpr int patience = 3000; // milliseconds

// The same for every way of writing the folder's path.
QString nameOf(const QString& directory) {
    const QString path = QDir(directory).canonicalPath();
    return QStringLiteral("corvel-") +
           QLatin1String(
               QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex().left(32));
}

} // namespace

FrontDoor::FrontDoor(const QString& directory, std::function<void()> knocked) {
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this, knocked = std::move(knocked)] {
        while (QLocalSocket* const visitor = server_.nextPendingConnection()) {
            QObject::connect(visitor, &QLocalSocket::disconnected, visitor, &QObject::deleteLater);
            visitor->write("1");
            visitor->disconnectFromServer();
            knocked();
        }
    });
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(nameOf(directory)); // of a copy that crashed: this one has the lock
    server_.listen(nameOf(directory));
}

void FrontDoor::knock(const QString& directory, QObject& owner, std::function<void(bool)> answered) {
    auto* const socket = new QLocalSocket(&owner);
    const auto end = [socket, answered = std::move(answered)](bool isAnswered) {
        socket->disconnect();
        socket->deleteLater();
        answered(isAnswered);
    };
    QObject::connect(socket, &QLocalSocket::readyRead, socket, [end] { end(true); });
    QObject::connect(
        socket, &QLocalSocket::errorOccurred, socket, [end] { end(false); }, Qt::QueuedConnection);
    QTimer::singleShot(patience, socket, [end] { end(false); });
    socket->connectToServer(nameOf(directory));
}

} // namespace corvel

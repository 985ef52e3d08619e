#include "demo/DemoListener.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>

#include <memory>

// The resource lies in a library, whose parts are left out of a program that does not ask for them. It has to
// be asked for outside of any namespace.
static QByteArray keyPair() {
    Q_INIT_RESOURCE(trial);
    QFile file(QStringLiteral(":/demo/trial.pem"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

namespace corvel {

QSslCertificate DemoListener::certificate() {
    return QSslCertificate(keyPair());
}

void DemoListener::incomingConnection(qintptr handle) {
    if (!encrypts_) {
        QTcpServer::incomingConnection(handle);
        return;
    }
    auto socket = std::make_unique<QSslSocket>(this);
    if (!socket->setSocketDescriptor(handle)) {
        return;
    }
    QSslConfiguration configuration = socket->sslConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2OrLater);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone); // a client is known by its password alone
    configuration.setLocalCertificate(certificate());
    configuration.setPrivateKey(QSslKey(keyPair(), QSsl::Rsa));
    socket->setSslConfiguration(configuration);
    addPendingConnection(socket.release());
}

} // namespace corvel

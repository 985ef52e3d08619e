#include "net/qt/wSock.h"

#include "net/qt/Certificates.h"
#include "widgets/TextConversion.h"

#include <QCoreApplication>
#include <QFutureWatcher>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QSslCipher>
#include <QSslConfiguration>
#include <QSslSocket>

#include <memory>
#include <utility>

namespace corvel {

namespace {

// What one event may take from the network, so that a flood of data never holds up the window.
constexpr qint64 bytesPerEvent = qint64{256} * 1024;

std::string protocolName(QSsl::SslProtocol protocol) {
    return protocol == QSsl::TlsV1_3 ? "TLS 1.3" : protocol == QSsl::TlsV1_2 ? "TLS 1.2" : "TLS";
}

} // namespace

wSock::wSock(QObject* parent) : QObject(parent) {
    use(false);
}

// The socket must not report its own end to a program that is half gone.
wSock::~wSock() {
    socket_->disconnect(this);
}

// A socket that can encrypt is made for those who want it alone: the first one takes its time.
void wSock::use(bool tls) {
    tls_ = tls ? new QSslSocket : nullptr;
    socket_.reset(tls ? tls_ : new QTcpSocket);
    socket_->setReadBufferSize(bytesPerEvent);
    // The desktop's proxy is one for the web; asking for it can hold up the window, too.
    socket_->setProxy(QNetworkProxy::NoProxy);
    connect(socket_.get(), &QTcpSocket::connected, this, [this] { tell([this] { emit connected(); }); });
    connect(socket_.get(), &QTcpSocket::readyRead, this, &wSock::takeData);
    connect(socket_.get(), &QTcpSocket::stateChanged, this, &wSock::stateChanged);
    connect(socket_.get(), &QTcpSocket::errorOccurred, this,
            [this](QAbstractSocket::SocketError error) { tell([this, error] { reportError(error); }); });
    if (tls) {
        tls_->setSslConfiguration(clientConfiguration());
        tls_->setPauseMode(QAbstractSocket::PauseOnSslErrors);
        connect(tls_, &QSslSocket::encrypted, this, &wSock::takeAgreement);
        connect(tls_, &QSslSocket::sslErrors, this, &wSock::verifyCertificate);
    }
}

SocketState wSock::state() const {
    switch (socket_->state()) {
    case QAbstractSocket::UnconnectedState:
        return SocketState::closed;
    case QAbstractSocket::HostLookupState:
        return SocketState::resolvingHost;
    case QAbstractSocket::ConnectingState:
        return SocketState::connecting;
    case QAbstractSocket::ConnectedState:
        return SocketState::connected;
    case QAbstractSocket::BoundState:
        return SocketState::open;
    case QAbstractSocket::ListeningState:
        return SocketState::listening;
    case QAbstractSocket::ClosingState:
        return SocketState::closing;
    }
    return SocketState::error;
}

void wSock::Connect(const std::string& host, std::int32_t port, bool mayEncrypt) {
    Close();
    host_ = host;
    port_ = port;
    if (mayEncrypt || tls_ != nullptr) { // Qt never goes on with a socket that was closed while it waited
        use(mayEncrypt);
    }
    if (tls_ != nullptr) {
        tls_->setPeerVerifyName(textOf(host));
    }
    isInCall_ = true; // Windows refuses an address on the spot
    socket_->connectToHost(textOf(host), static_cast<quint16>(port));
    isInCall_ = false;
}

void wSock::StartEncryption(const std::string& trusted) {
    trusted_ = trusted;
    if (tls_->bytesAvailable() > 0) { // they would be handed out as if they had come encrypted
        tellLater(
            [this] { emit failed(tr("Something came in clear"), QAbstractSocket::SslHandshakeFailedError); });
        return;
    }
    isInCall_ = true;
    tls_->startClientEncryption();
    isInCall_ = false;
}

void wSock::AcceptCertificate() {
    if (std::exchange(isInDoubt_, false)) {
        tls_->ignoreSslErrors();
        tls_->resume();
    }
}

void wSock::Close() {
    ++attempt_;
    {
        const QSignalBlocker silence(*socket_);
        socket_->abort();
        // Not even what AcceptCertificate has begun goes on: it would find nothing to go on with.
        QCoreApplication::removePostedEvents(socket_.get(), QEvent::MetaCall);
    }
    isInDoubt_ = false;
    encryption_ = {};
    certificate_.reset();
    emit stateChanged();
}

void wSock::Send(std::string_view bytes) {
    socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::int32_t wSock::localPort() const {
    return socket_->localPort();
}

std::string wSock::remoteHost() const {
    return host_;
}

std::string wSock::remoteAddress() const {
    return socket_->peerAddress().toString().toStdString();
}

std::int32_t wSock::remotePort() const {
    return port_;
}

void wSock::tell(const std::function<void()>& event) {
    if (isInCall_) {
        tellLater(event);
    } else {
        event();
    }
}

void wSock::tellLater(const std::function<void()>& event) {
    const auto later = [this, event, attempt = attempt_] {
        if (attempt == attempt_) {
            event();
        }
    };
    QMetaObject::invokeMethod(this, later, Qt::QueuedConnection);
}

void wSock::takeData() {
    if (state() != SocketState::connected || socket_->bytesAvailable() == 0) {
        return;
    }
    if (tls_ != nullptr && tls_->isEncrypted() && tls_->peerCertificate() != certificate_) {
        emit failed(tr("The server came with another certificate"), QAbstractSocket::SslHandshakeFailedError);
        return;
    }
    emit dataArrived(socket_->readAll());
}

void wSock::takeAgreement() {
    if (certificate_) {
        return; // once more: what came with it is looked at with the next bytes
    }
    certificate_ = tls_->peerCertificate();
    encryption_ = {.protocol = protocolName(tls_->sessionProtocol()),
                   .cipher = toCore(tls_->sessionCipher().name()),
                   .chain = recordsOf(tls_->peerCertificateChain())};
    tell([this] { emit encrypted(); });
}

// The socket is paused behind this call, and only a paused one can go on: so nothing is decided at once.
void wSock::verifyCertificate(const QList<QSslError>& errors) {
    isInDoubt_ = true;
    encryption_.chain = recordsOf(tls_->peerCertificateChain());
    const bool isTrusted = !encryption_.chain.empty() && encryption_.chain.front().fingerprint == trusted_;
    if (isTrusted || !isVerifiedBeside()) {
        tellLater([this, errors, isTrusted] { doubtCertificate(isTrusted ? QList<QSslError>() : errors); });
        return;
    }
    auto* const watcher = new QFutureWatcher<QList<QSslError>>(this); // hears nothing once this is gone
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, errors, attempt = attempt_] {
        watcher->deleteLater();
        if (attempt == attempt_) {
            doubtCertificate(watcher->result() + unverifiedBeside(errors));
        }
    });
    watcher->setFuture(errorsOf(tls_->peerCertificateChain(), textOf(host_)));
}

// errors: none where there is no doubt.
void wSock::doubtCertificate(const QList<QSslError>& errors) {
    if (errors.isEmpty()) {
        AcceptCertificate();
        return;
    }
    emit certificateDoubted(problemsOf(errors, textOf(host_)));
}

void wSock::reportError(QAbstractSocket::SocketError error) {
    // Qt ends a connection with another certificate under the number of one that the peer has ended.
    if (error == QAbstractSocket::RemoteHostClosedError &&
        !socket_->errorString().contains(QLatin1String("renegotiation"))) {
        takeData();
        emit closedByPeer();
    } else {
        emit failed(socket_->errorString(), error);
    }
}

} // namespace corvel

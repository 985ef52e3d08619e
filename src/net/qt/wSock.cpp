#include "net/qt/wSock.h"

#include "widgets/TextConversion.h"

#include <QHostAddress>
#include <QNetworkProxy>

namespace corvel {

namespace {

// What one event may take from the network, so that a flood of data never holds up the window.
constexpr qint64 bytesPerEvent = qint64{256} * 1024;

} // namespace

wSock::wSock(QObject* parent) : QObject(parent) {
    socket_.setReadBufferSize(bytesPerEvent);
    // The desktop's proxy is one for the web; asking for it can hold up the window, too.
    socket_.setProxy(QNetworkProxy::NoProxy);
    connect(&socket_, &QTcpSocket::connected, this, [this] { tell([this] { emit connected(); }); });
    connect(&socket_, &QTcpSocket::readyRead, this, &wSock::takeData);
    connect(&socket_, &QTcpSocket::stateChanged, this, &wSock::stateChanged);
    connect(&socket_, &QTcpSocket::errorOccurred, this,
            [this](QAbstractSocket::SocketError error) { tell([this, error] { reportError(error); }); });
}

// The socket must not report its own end to a program that is half gone.
wSock::~wSock() {
    socket_.disconnect(this);
}

SocketState wSock::state() const {
    switch (socket_.state()) {
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

void wSock::Connect(const std::string& host, std::int32_t port) {
    Close();
    host_ = host;
    port_ = port;
    isConnecting_ = true; // Windows refuses an address on the spot
    socket_.connectToHost(textOf(host), static_cast<quint16>(port));
    isConnecting_ = false;
}

void wSock::Close() {
    ++attempt_;
    {
        const QSignalBlocker silence(socket_);
        socket_.abort();
    }
    emit stateChanged();
}

void wSock::Send(std::string_view bytes) {
    socket_.write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::int32_t wSock::localPort() const {
    return socket_.localPort();
}

std::string wSock::remoteHost() const {
    return host_;
}

std::string wSock::remoteAddress() const {
    return socket_.peerAddress().toString().toStdString();
}

std::int32_t wSock::remotePort() const {
    return port_;
}

void wSock::tell(const std::function<void()>& event) {
    if (!isConnecting_) {
        event();
        return;
    }
    const auto later = [this, event, attempt = attempt_] {
        if (attempt == attempt_) {
            event();
        }
    };
    QMetaObject::invokeMethod(this, later, Qt::QueuedConnection);
}

void wSock::takeData() {
    if (state() == SocketState::connected) {
        emit dataArrived(socket_.readAll());
    }
}

void wSock::reportError(QAbstractSocket::SocketError error) {
    if (error == QAbstractSocket::RemoteHostClosedError) {
        takeData();
        emit closedByPeer();
    } else {
        emit failed(socket_.errorString(), error);
    }
}

} // namespace corvel

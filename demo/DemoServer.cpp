#include "demo/DemoServer.h"

#include <QHostAddress>
#include <QSslCertificate>
#include <QSslSocket>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

constexpr std::size_t defaultPiece = 65'536;
constexpr qint64 readBufferSize = 16'384;
constexpr qint64 longestLine = 4096; // with a CR at its end

// One client of the demo server. Answers one command after the other: the next line is looked at when the
// reply to the one before has gone out, so a client that does not read holds up nobody but itself. Goes with
// its socket, which it takes over; world must live longer.
class DemoConnection : public QObject {
  public:
    DemoConnection(QTcpSocket* socket, DemoWorld& world, const DemoOptions& options, QObject* parent)
        : QObject(parent), world_(world), socket_(socket), tls_(qobject_cast<QSslSocket*>(socket)),
          pieceSize_(options.chunkBytes > 0 ? static_cast<std::size_t>(options.chunkBytes) : defaultPiece) {
        socket_->setParent(this);
        socket_->setReadBufferSize(readBufferSize);
        // Small pieces are to travel as they are written, not gathered by the system.
        socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        latency_.setSingleShot(true);
        latency_.setTimerType(Qt::PreciseTimer);
        latency_.setInterval(options.latencyMilliseconds);
        connect(&latency_, &QTimer::timeout, this, &DemoConnection::sendPiece);
        connect(socket_, &QTcpSocket::bytesWritten, this, &DemoConnection::sendNextPiece);
        connect(socket_, &QTcpSocket::readyRead, this, &DemoConnection::answerNextLine);
        connect(socket_, &QTcpSocket::disconnected, this, &QObject::deleteLater);
        client_.tls = options.tls;
        if (tls_ != nullptr) {
            connect(tls_, &QSslSocket::encryptedBytesWritten, this, &DemoConnection::sendNextPiece);
        }
        if (options.tls == DemoTls::implicit) {
            connect(tls_, &QSslSocket::encrypted, this, [this] { startReply(demoGreeting()); });
            tls_->startServerEncryption();
        } else {
            startReply(demoGreeting());
        }
    }

  private:
    // After the reply to AUTH. What came in clear behind it may be another's than who encrypts, but
    // QSslSocket would hand it out as if it had come encrypted: so it ends the connection. (What comes in
    // clear from now on is no handshake and ends it too.)
    void startEncryption() { tls_->bytesAvailable() > 0 ? tls_->abort() : tls_->startServerEncryption(); }

    // Once the piece before has left this program, encrypted or not: a client that does not read is not to
    // gather more than a piece. What a handshake writes is not to cut the latency short.
    void sendNextPiece() {
        const bool isOut =
            socket_->bytesToWrite() == 0 && (tls_ == nullptr || tls_->encryptedBytesToWrite() == 0);
        if (isOut && !latency_.isActive()) {
            sendPiece();
        }
    }

    void startReply(std::string text) {
        reply_ = std::move(text);
        sent_ = 0;
        if (latency_.interval() > 0) {
            latency_.start();
        } else {
            sendPiece();
        }
    }

    void sendPiece() {
        if (reply_.empty()) {
            return;
        }
        if (sent_ == reply_.size()) {
            reply_ = std::string();
            if (client_.isLeaving) {
                socket_->disconnectFromHost();
            } else if (client_.isEncrypted && tls_->mode() == QSslSocket::UnencryptedMode) {
                startEncryption();
            } else {
                answerNextLine();
            }
            return;
        }
        const std::size_t size = std::min(pieceSize_, reply_.size() - sent_);
        socket_->write(reply_.data() + sent_, static_cast<qint64>(size));
        sent_ += size;
    }

    // A line ends with LF; a CR in front of it belongs to the line end (RFC 959, section 5.3). Of one that is
    // too long the client is told as soon as it is; the rest of it is dropped.
    void answerNextLine() {
        while (reply_.empty() && !client_.isLeaving &&
               (socket_->canReadLine() || socket_->bytesAvailable() > longestLine)) {
            const std::string line = socket_->readLine(longestLine + 1).toStdString();
            const bool isEnd = line.ends_with('\n');
            if (std::exchange(isDropping_, !isEnd)) {
                continue;
            }
            const std::string_view text = std::string_view(line).substr(0, line.size() - 1);
            startReply(
                isEnd ? answerCommand(world_, client_, text.substr(0, text.size() - text.ends_with('\r')))
                      : demoLineTooLong());
        }
    }

    DemoWorld& world_;
    QTcpSocket* socket_;
    QSslSocket* tls_; // the same socket, or none where nothing is encrypted
    QTimer latency_;
    std::size_t pieceSize_;
    DemoClient client_;
    std::string reply_;    // what is going out, empty when nothing is
    std::size_t sent_ = 0; // how much of it the socket was given
    bool isDropping_ = false;
};

} // namespace

DemoServer::DemoServer(const DemoOptions& options, QObject* parent)
    : QObject(parent), options_(options), world_(options.users, options.entries),
      listener_(options.tls != DemoTls::none) {
    connect(&listener_, &QTcpServer::newConnection, this, &DemoServer::acceptClients);
}

bool DemoServer::listen() {
    return listener_.listen(QHostAddress::LocalHost, static_cast<quint16>(options_.port));
}

QSslCertificate DemoServer::certificate() {
    return DemoListener::certificate();
}

std::string DemoServer::fingerprint() {
    return certificate().digest(QCryptographicHash::Sha256).toHex().toStdString();
}

void DemoServer::acceptClients() {
    while (QTcpSocket* socket = listener_.nextPendingConnection()) {
        if (clientCount() == mostClients) {
            if (options_.tls != DemoTls::implicit) { // its clients wait for a handshake, not for text
                socket->write("421 Too many connections, try again later.\r\n");
            }
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            socket->disconnectFromHost();
        } else {
            new DemoConnection(socket, world_, options_, &clients_);
        }
    }
}

} // namespace corvel

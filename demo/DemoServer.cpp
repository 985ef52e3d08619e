#include "demo/DemoServer.h"

#include <QHostAddress>
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
        : QObject(parent), world_(world), socket_(socket),
          pieceSize_(options.chunkBytes > 0 ? static_cast<std::size_t>(options.chunkBytes) : defaultPiece) {
        socket_->setParent(this);
        socket_->setReadBufferSize(readBufferSize);
        // Small pieces are to travel as they are written, not gathered by the system.
        socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        latency_.setSingleShot(true);
        latency_.setTimerType(Qt::PreciseTimer);
        latency_.setInterval(options.latencyMilliseconds);
        connect(&latency_, &QTimer::timeout, this, &DemoConnection::sendPiece);
        connect(socket_, &QTcpSocket::bytesWritten, this, [this] {
            if (socket_->bytesToWrite() == 0) {
                sendPiece();
            }
        });
        connect(socket_, &QTcpSocket::readyRead, this, &DemoConnection::answerNextLine);
        connect(socket_, &QTcpSocket::disconnected, this, &QObject::deleteLater);
        startReply(demoGreeting());
    }

  private:
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
            client_.isLeaving ? socket_->disconnectFromHost() : answerNextLine();
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
    QTimer latency_;
    std::size_t pieceSize_;
    DemoClient client_;
    std::string reply_;    // what is going out, empty when nothing is
    std::size_t sent_ = 0; // how much of it the socket was given
    bool isDropping_ = false;
};

} // namespace

DemoServer::DemoServer(const DemoOptions& options, QObject* parent)
    : QObject(parent), options_(options), world_(options.users, options.entries) {
    connect(&listener_, &QTcpServer::newConnection, this, &DemoServer::acceptClients);
}

bool DemoServer::listen() {
    return listener_.listen(QHostAddress::LocalHost, static_cast<quint16>(options_.port));
}

void DemoServer::acceptClients() {
    while (QTcpSocket* socket = listener_.nextPendingConnection()) {
        if (clientCount() == mostClients) {
            socket->write("421 Too many connections, try again later.\r\n");
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            socket->disconnectFromHost();
        } else {
            new DemoConnection(socket, world_, options_, &clients_);
        }
    }
}

} // namespace corvel

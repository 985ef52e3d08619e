#include "demo/DemoConnection.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvel {

namespace {

constexpr std::size_t defaultPiece = 65'536;
constexpr qint64 readBufferSize = 16'384;

} // namespace

DemoConnection::DemoConnection(QTcpSocket* socket, DemoWorld& world, const DemoOptions& options,
                               QObject* parent)
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
    connect(socket_, &QTcpSocket::disconnected, this, &DemoConnection::closed);
    startReply(demoGreeting());
}

void DemoConnection::startReply(std::string text) {
    reply_ = std::move(text);
    sent_ = 0;
    if (latency_.interval() > 0) {
        latency_.start();
    } else {
        sendPiece();
    }
}

void DemoConnection::sendPiece() {
    if (reply_.empty()) {
        return;
    }
    if (sent_ == reply_.size()) {
        finishReply();
        return;
    }
    const std::size_t size = std::min(pieceSize_, reply_.size() - sent_);
    socket_->write(reply_.data() + sent_, static_cast<qint64>(size));
    sent_ += size;
}

void DemoConnection::finishReply() {
    reply_ = std::string();
    if (client_.isLeaving) {
        socket_->disconnectFromHost();
    } else {
        answerNextLine();
    }
}

void DemoConnection::answerNextLine() {
    if (!reply_.empty() || client_.isLeaving) {
        return;
    }
    std::array<char, DemoLineReader::longestLine> bytes{};
    while (true) {
        if (const auto line = lines_.next()) {
            startReply(line->isLong ? demoLineTooLong() : answerCommand(world_, client_, line->text));
            return;
        }
        const qint64 size = socket_->read(bytes.data(), static_cast<qint64>(bytes.size()));
        if (size <= 0) {
            return;
        }
        lines_.add({bytes.data(), static_cast<std::size_t>(size)});
    }
}

void DemoLineReader::add(std::string_view bytes) {
    if (isDropping_) {
        const std::size_t end = bytes.find('\n');
        if (end == std::string_view::npos) {
            return;
        }
        isDropping_ = false;
        bytes.remove_prefix(end + 1);
    }
    bytes_.append(bytes);
}

std::optional<DemoLineReader::Line> DemoLineReader::next() {
    const std::size_t end = bytes_.find('\n');
    const bool isLong = (end == std::string::npos ? bytes_.size() : end) > longestLine;
    if (end == std::string::npos && !isLong) {
        return std::nullopt;
    }
    Line line{.text = {}, .isLong = isLong};
    if (!isLong) {
        line.text.assign(bytes_, 0, end);
        if (line.text.ends_with('\r')) {
            line.text.pop_back();
        }
    }
    isDropping_ = end == std::string::npos;
    bytes_.erase(0, isDropping_ ? end : end + 1);
    return line;
}

} // namespace corvel

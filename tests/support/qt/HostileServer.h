#pragma once

#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace corvel::test {

// What is said in answer to a command: head, then unit again and again until that are so many bytes or more,
// then tail. It is made while it goes out, so that the server needs no memory for it.
struct HostileReply {
    std::string head = {};
    std::string unit = {};
    std::size_t unitBytes = 0;
    std::string tail = {};
};

// A server on loopback that answers every line by its beginning: "" stands for the greeting, and what is not
// in the script is answered as by a server with an empty root directory. An empty reply is silence.
class HostileServer : public QTcpServer {
  public:
    using Script = std::map<std::string, HostileReply, std::greater<>>;

    // pieceSize: how many bytes go out at a time. received: is told how many bytes have come; borrowed.
    explicit HostileServer(Script script, std::size_t pieceSize, std::atomic<std::size_t>& received,
                           QObject* parent)
        : QTcpServer(parent), pieceSize_(pieceSize), received_(received) {
        script.merge(Script{{"", {"220 ready\r\n"}},
                            {"USER", {"331 password please\r\n"}},
                            {"PASS", {"230 welcome\r\n"}},
                            {"SITE CorvelExt", {"500 Unknown\r\n"}},
                            {"CWD", {"250 CWD command successful.\r\n"}},
                            {"STAT", {"211-status of /:\r\n211 End of Status\r\n"}},
                            {"PWD", {"257 \"/\" is current directory.\r\n"}}});
        script_ = std::move(script);
        connect(this, &QTcpServer::newConnection, this, [this] { serve(*nextPendingConnection()); });
        listen(QHostAddress::LocalHost);
    }

  private:
    struct Connection {
        std::string line;
        std::deque<HostileReply> replies;
        std::size_t unitBytes = 0; // of the first reply, that were made
        std::string made;          // and are not sent
    };

    void serve(QTcpSocket& socket) {
        socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        const auto connection = std::make_shared<Connection>();
        connect(&socket, &QTcpSocket::bytesWritten, &socket,
                [=, this, &socket] { send(socket, *connection); });
        connect(&socket, &QTcpSocket::readyRead, &socket, [=, this, &socket] {
            for (const char byte : socket.readAll()) {
                ++received_;
                connection->line += byte;
                if (byte == '\n') {
                    answer(*connection, std::exchange(connection->line, {}));
                }
            }
            send(socket, *connection);
        });
        answer(*connection, "");
        send(socket, *connection);
    }

    void answer(Connection& connection, const std::string& line) {
        const auto found = std::find_if(script_.begin(), script_.end(), [&line](const auto& reply) {
            return line.starts_with(reply.first) && line.empty() == reply.first.empty();
        });
        connection.replies.push_back(found == script_.end() ? HostileReply{"200 ok\r\n"} : found->second);
    }

    // Keeps the system's buffer full, but no more.
    void send(QTcpSocket& socket, Connection& connection) const {
        while (socket.bytesToWrite() == 0 && makeMore(connection)) {
            const std::string piece = connection.made.substr(0, pieceSize_);
            connection.made.erase(0, piece.size());
            socket.write(piece.data(), static_cast<qint64>(piece.size()));
        }
    }

    // Whether there is anything to send.
    bool makeMore(Connection& connection) const {
        while (connection.made.size() < pieceSize_ && !connection.replies.empty()) {
            HostileReply& reply = connection.replies.front();
            connection.made += std::exchange(reply.head, {});
            while (connection.unitBytes < reply.unitBytes && connection.made.size() < pieceSize_) {
                connection.made += reply.unit;
                connection.unitBytes += reply.unit.size();
            }
            if (connection.unitBytes >= reply.unitBytes) {
                connection.made += reply.tail;
                connection.unitBytes = 0;
                connection.replies.pop_front();
            }
        }
        return !connection.made.empty();
    }

    Script script_;
    std::size_t pieceSize_;
    std::atomic<std::size_t>& received_;
};

} // namespace corvel::test

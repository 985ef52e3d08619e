#pragma once

#include "demo/DemoCommands.h"
#include "demo/DemoServer.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// Cuts the bytes of a client into command lines (RFC 959, section 5.3). A line ends with LF; a CR in front of
// it belongs to the line end. Holds at most longestLine bytes of an unfinished line, whatever arrives.
class DemoLineReader {
  public:
    static constexpr std::size_t longestLine = 4096;

    struct Line {
        std::string text;    // without its line end
        bool isLong = false; // there is no text: the line went past longestLine and is dropped to its end
    };

    // Takes what arrived, however it was cut.
    void add(std::string_view bytes);

    // The next line that arrived, or nothing. A line that is too long is told of once, as soon as it is.
    std::optional<Line> next();

  private:
    std::string bytes_;
    bool isDropping_ = false;
};

// One client of the demo server. Answers one command after the other: the next line is looked at when the
// reply to the one before has gone out, so a client that does not read holds up nobody but itself.
class DemoConnection : public QObject {
    Q_OBJECT

  public:
    // Takes the socket over; world must live longer than the connection. Sends the greeting.
    DemoConnection(QTcpSocket* socket, DemoWorld& world, const DemoOptions& options, QObject* parent);

  signals:
    // The client is gone. Sent once, the last thing that a connection does.
    void closed();

  private:
    void startReply(std::string text);
    void sendPiece();
    void finishReply();
    void answerNextLine();

    DemoWorld& world_;
    QTcpSocket* socket_;
    QTimer latency_;
    std::size_t pieceSize_;
    DemoClient client_;
    DemoLineReader lines_;
    std::string reply_;    // what is going out, empty when nothing is
    std::size_t sent_ = 0; // how much of it the socket was given
};

} // namespace corvel

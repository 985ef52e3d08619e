#pragma once

#include "demo/DemoCommands.h"
#include "demo/DemoLineReader.h"
#include "demo/DemoServer.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

#include <string>

namespace corvel {

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

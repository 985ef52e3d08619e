#include "DemoProgram.h"
#include "net/qt/wSock.h"
#include "net/ReplyBuffer.h"

#include <QSslSocket>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvel {
namespace {

// A reply of 8 MiB.
QByteArray reply() {
    constexpr int lineSize = 128;
    return QByteArray("211-")
        .append((QByteArray(lineSize - 2, 'x') + "\r\n").repeated(65536))
        .append("211 end\r\n");
}

// Listens for whoever wants the reply: encrypted from the first byte, or in clear. Gives the port.
int serveReply(QObject* parent, bool encrypts) {
    auto* const listener = new DemoListener(encrypts);
    listener->setParent(parent);
    QObject::connect(listener, &QTcpServer::newConnection, listener, [encrypts, listener] {
        QTcpSocket* const client = listener->nextPendingConnection();
        if (encrypts) {
            auto* const tls = qobject_cast<QSslSocket*>(client);
            QObject::connect(tls, &QSslSocket::encrypted, tls, [tls] { tls->write(reply()); });
            tls->startServerEncryption();
        } else {
            client->write(reply());
        }
    });
    listener->listen(QHostAddress::LocalHost);
    return listener->serverPort();
}

struct Cost {
    double seconds = 0; // of this thread
    double longestTurn = 0;
};

// Runs the loop until isOver.
template <typename IsOver>
Cost costOf(IsOver isOver) {
    Cost cost;
    const double start = threadSeconds();
    while (!isOver()) {
        const double turn = threadSeconds();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        cost.longestTurn = std::max(cost.longestTurn, threadSeconds() - turn);
    }
    cost.seconds = threadSeconds() - start;
    return cost;
}

// The reply arrives through the program's own socket and is assembled.
Cost assembled(int port, bool encrypts) {
    wSock socket;
    ReplyBuffer buffer;
    bool isOver = false;
    QObject::connect(&socket, &wSock::connected, &socket, [&] {
        if (encrypts) {
            socket.StartEncryption(DemoServer::fingerprint());
        }
    });
    QObject::connect(&socket, &wSock::dataArrived, &socket, [&](const QByteArray& bytes) {
        isOver = buffer.append({bytes.constData(), static_cast<std::size_t>(bytes.size())}) ==
                 ReplyProgress::complete;
    });
    socket.Connect("127.0.0.1", port, encrypts);
    return costOf([&] { return isOver; });
}

// The cipher and the network alone: the reply arrives at a bare socket, which drops it.
Cost dropped(int port) {
    QSslSocket socket;
    qsizetype left = reply().size();
    QObject::connect(&socket, &QSslSocket::sslErrors, &socket, [&] { socket.ignoreSslErrors(); });
    QObject::connect(&socket, &QSslSocket::readyRead, &socket, [&] { left -= socket.readAll().size(); });
    socket.connectToHostEncrypted(QStringLiteral("127.0.0.1"), static_cast<quint16>(port));
    return costOf([&] { return left == 0; });
}

// The ratio of a reply that comes encrypted to the cipher and the plain one together should stay below 1.1,
// and no turn of the loop takes more than 50 ms.
void encryptedReply(benchmark::State& state) {
    ServerThread plainServer([](QObject* parent) { return serveReply(parent, false); });
    ServerThread server([](QObject* parent) { return serveReply(parent, true); });
    std::vector<double> plain;
    std::vector<double> cipher;
    std::vector<double> encrypted;
    double longestTurn = 0;
    const auto median = [](std::vector<double>& times) {
        std::ranges::sort(times);
        return times[times.size() / 2];
    };
    for ([[maybe_unused]] auto iteration : state) {
        plain.push_back(assembled(plainServer.waitForPort(), false).seconds);
        cipher.push_back(dropped(server.waitForPort()).seconds);
        const Cost cost = assembled(server.waitForPort(), true);
        encrypted.push_back(cost.seconds);
        longestTurn = std::max(longestTurn, cost.longestTurn);
    }
    state.counters["plain_ms"] = median(plain) * 1e3;
    state.counters["cipher_ms"] = median(cipher) * 1e3;
    state.counters["encrypted_ms"] = median(encrypted) * 1e3;
    state.counters["longest_turn_ms"] = longestTurn * 1e3;
    state.counters["ratio"] = median(encrypted) / (median(plain) + median(cipher));
}
BENCHMARK(encryptedReply)->Iterations(15)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel

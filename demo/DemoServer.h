#pragma once

#include "demo/DemoCommands.h"
#include "demo/DemoListener.h"

#include <QString>

#include <cstdint>
#include <string>

namespace corvel {

struct DemoOptions {
    int port = 0;                // 0: the system chooses
    int users = 60;              // 1 to DemoAccounts::mostUsers
    int entries = 0;             // above 0: one directory /big with that many files
    int latencyMilliseconds = 0; // every reply waits that long
    int chunkBytes = 0;          // above 0: every reply goes out in writes of that size, one after the other
    DemoTls tls = DemoTls::none; // other than none: QSslSocket is loaded, which costs milliseconds and MiBs
};

// The in-memory FTP server of trials and tests: control connections alone, on the loopback address. It needs
// the event loop of the thread that made it and blocks nothing. Several clients share one world of files and
// accounts. It remembers of a client at most one unfinished command line and one reply.
class DemoServer : public QObject {
    Q_OBJECT

  public:
    static constexpr const char* userName = "demo";
    static constexpr const char* password = "demo";
    static constexpr int mostClients = 256;

    // Builds the world; listens to nothing yet. Closing: when it is destroyed its connections are cut.
    explicit DemoServer(const DemoOptions& options, QObject* parent = nullptr);

    // Starts to listen on 127.0.0.1; false when it cannot, and then errorText() says why.
    bool listen();
    QString errorText() const { return listener_.errorString(); }

    // The port that it listens on; 0 when it does not.
    std::uint16_t port() const { return listener_.serverPort(); }

    // The certificate of every demo server that encrypts, made for localhost and 127.0.0.1 and signed by
    // itself.
    static QSslCertificate certificate();
    // Its SHA-256 fingerprint, in lower-case hexadecimal digits.
    static std::string fingerprint();

    int clientCount() const { return static_cast<int>(clients_.children().size()); }
    const DemoWorld& world() const { return world_; }

  private:
    void acceptClients();

    DemoOptions options_;
    DemoWorld world_;
    DemoListener listener_;
    QObject clients_; // owns the connections; behind the world, at which they look
};

} // namespace corvel

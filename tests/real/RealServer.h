#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <cstdint>
#include <string>
#include <string_view>

namespace corvel::test {

// An FTP server that nobody here wrote, from the packages that scripts/fetch-servers unpacks.
enum class ServerKind { proftpd, vsftpd };

// One such server as a process of its own, listening on loopback, over a scratch home that it may change:
//
//   work/                       the only directory there; all the rest lies in it and can be written
//     My Docs/letter.txt
//     dir/inner.txt
//     link -> dir
//     old.txt                   dated 5 January 2020, which servers write with padded day and year
//     Grüße.txt                 in UTF-8
//
// It runs as root and as anybody else. As root the session is locked into the home, so that serverPath() is
// "/work"; otherwise the server names its files as the machine does. It ends with this object, with the
// process that made it, or after five minutes, whichever comes first.
class RealServer {
  public:
    static constexpr std::string_view password = "secret";

    // Starts the server and waits until it greets; ten seconds at most.
    // Throws std::runtime_error with what the server said if it cannot be had or does not start.
    explicit RealServer(ServerKind kind);
    ~RealServer();
    RealServer(const RealServer&) = delete;
    RealServer& operator=(const RealServer&) = delete;

    std::uint16_t port() const { return port_; }
    // Who logs in, with password.
    std::string_view userName() const;
    // The directory work as the server names it.
    std::string serverPath() const;
    // The directory work as the machine names it.
    QString localPath() const;

  private:
    void makeHome() const;
    QString writeFile(const QString& name, const QByteArray& text) const;
    QString writeConfiguration() const;
    void waitForGreeting();

    ServerKind kind_;
    std::uint16_t port_;
    QTemporaryDir scratch_; // outlives the process
    QProcess process_;
};

} // namespace corvel::test

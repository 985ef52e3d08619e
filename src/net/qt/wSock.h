#pragma once

#include "common/Ports.h"

#include <QObject>
#include <QSslCertificate>
#include <QSslError>
#include <QTcpSocket>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QSslSocket;

namespace corvel {

// The Socket port over QTcpSocket, or QSslSocket where the connection may be encrypted. Name look-up and
// connecting run in the background.
class wSock : public QObject, public Socket {
    Q_OBJECT

  public:
    explicit wSock(QObject* parent = nullptr);
    ~wSock() override;

    SocketState state() const override;
    void Connect(const std::string& host, std::int32_t port, bool mayEncrypt) override;
    void StartEncryption(const std::string& trusted) override;
    void AcceptCertificate() override;
    const EncryptionFacts& encryption() const override { return encryption_; }
    void Close() override;
    void Send(std::string_view bytes) override;
    std::int32_t localPort() const override;
    std::string remoteHost() const override;
    std::string remoteAddress() const override;
    std::int32_t remotePort() const override;

  signals:
    void stateChanged(); // in whatever way, by Connect and Close too
    void connected();
    void encrypted();
    void certificateDoubted(const std::vector<std::string>& problems); // sentences, UTF-8
    void dataArrived(const QByteArray& bytes);
    void closedByPeer();
    void failed(const QString& description, int number);

  private:
    void use(bool tls);
    // Emits from the event loop what comes up inside of a call, unless the connection is another one by then.
    void tell(const std::function<void()>& event);
    void tellLater(const std::function<void()>& event);
    void takeData();
    void takeAgreement();
    void verifyCertificate(const QList<QSslError>& errors);
    void doubtCertificate(const QList<QSslError>& errors);
    void reportError(QAbstractSocket::SocketError error);

    std::unique_ptr<QTcpSocket> socket_;
    QSslSocket* tls_ = nullptr; // the same, where it can encrypt
    std::string host_;
    std::int32_t port_ = 0;
    std::string trusted_; // a fingerprint
    EncryptionFacts encryption_;
    // With which the encryption began. Even an empty one would load the library.
    std::optional<QSslCertificate> certificate_;
    bool isInCall_ = false;  // inside of Connect or StartEncryption
    bool isInDoubt_ = false; // the handshake waits for AcceptCertificate
    int attempt_ = 0;
};

} // namespace corvel

#pragma once

#include <QTcpServer>

class QSslCertificate;

namespace corvel {

// Hands out the sockets of new clients. Those of a server that encrypts are QSslSockets: in clear, but with
// all that startServerEncryption() needs, the certificate of trials and TLS 1.2 at least. For any other
// server nothing of TLS is loaded.
class DemoListener : public QTcpServer {
  public:
    explicit DemoListener(bool encrypts) : encrypts_(encrypts) {}

    // The certificate that encrypted clients are shown, always the same one. It protects nothing: its key is
    // known to everybody.
    static QSslCertificate certificate();

  protected:
    void incomingConnection(qintptr handle) override;

  private:
    bool encrypts_;
};

} // namespace corvel

#pragma once

#include "common/Ports.h"

#include <QObject>
#include <QTcpSocket>

#include <functional>

namespace corvel {

// The Socket port over QTcpSocket. Name look-up and connecting run in the background.
class wSock : public QObject, public Socket {
    Q_OBJECT

  public:
    explicit wSock(QObject* parent = nullptr);
    ~wSock() override;

    SocketState state() const override;
    void Connect(const std::string& host, std::int32_t port) override;
    void Close() override;
    void Send(std::string_view bytes) override;
    std::int32_t localPort() const override;
    std::string remoteHost() const override;
    std::string remoteAddress() const override;
    std::int32_t remotePort() const override;

  signals:
    void stateChanged(); // in whatever way, by Connect and Close too
    void connected();
    void dataArrived(const QByteArray& bytes);
    void closedByPeer();
    void failed(const QString& description, int number);

  private:
    // Emits from the event loop what comes up inside of Connect, unless the connection is another one by
    // then.
    void tell(const std::function<void()>& event);
    void takeData();
    void reportError(QAbstractSocket::SocketError error);

    QTcpSocket socket_;
    std::string host_;
    std::int32_t port_ = 0;
    bool isConnecting_ = false; // inside of Connect
    int attempt_ = 0;
};

} // namespace corvel

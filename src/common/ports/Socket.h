#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace corvel {

// The states of a socket, with the numbers of the socket control.
enum class SocketState {
    closed = 0,
    open = 1,
    listening = 2,
    connectionPending = 3,
    resolvingHost = 4,
    hostResolved = 5,
    connecting = 6,
    connected = 7,
    closing = 8,
    error = 9,
};

// One asynchronous TCP client connection. Its events (connected, data, closed, error) reach the program
// through mdlMain's wSock functions, always from the event loop and never from inside a call made here.
class Socket {
  public:
    virtual ~Socket() = default;

    virtual SocketState state() const = 0;
    // Starts a connection; returns at once. host is a name or an address, port 1 to 65535.
    virtual void Connect(const std::string& host, std::int32_t port) = 0;
    // Ends the connection at once and without an event; unsent and unread bytes are dropped.
    virtual void Close() = 0;
    // Hands bytes over for sending; does not wait for them to go out.
    virtual void Send(std::string_view bytes) = 0;

    // The two ends, as far as they are known; empty or 0 otherwise.
    virtual std::int32_t localPort() const = 0;
    virtual std::string remoteHost() const = 0;    // as given to Connect
    virtual std::string remoteAddress() const = 0; // the address that it was resolved to
    virtual std::int32_t remotePort() const = 0;
};

// The socket of no site: it is closed, and whatever is asked of it does nothing.
class NoSocket : public Socket {
  public:
    SocketState state() const override { return SocketState::closed; }
    void Connect(const std::string& /*host*/, std::int32_t /*port*/) override {}
    void Close() override {}
    void Send(std::string_view /*bytes*/) override {}
    std::int32_t localPort() const override { return 0; }
    std::string remoteHost() const override { return {}; }
    std::string remoteAddress() const override { return {}; }
    std::int32_t remotePort() const override { return 0; }
};

// Makes the socket of a site. The caller owns it.
using SocketFactory = std::function<std::unique_ptr<Socket>(int site)>;

} // namespace corvel

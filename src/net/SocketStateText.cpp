#include "net/SocketStateText.h"

namespace corvel {

std::string SocketStateText(const Socket& socket) {
    switch (socket.state()) {
    case SocketState::closed:
        return "Socket closed";
    case SocketState::open:
        return "Open";
    case SocketState::listening:
        return "Listening on port " + std::to_string(socket.localPort()) + " ...";
    case SocketState::connectionPending:
        return "Pending...";
    case SocketState::resolvingHost:
        return "Resolving host...";
    case SocketState::hostResolved:
        return "Host resolved";
    case SocketState::connecting:
        return "Connecting... ( " + socket.remoteHost() + ":" + std::to_string(socket.remotePort()) + " )";
    case SocketState::connected:
        return "Connected (" + socket.remoteAddress() + ":" + std::to_string(socket.remotePort()) + ")";
    case SocketState::closing:
        return "Closing socket...";
    case SocketState::error:
        return "ERROR";
    }
    return {};
}

} // namespace corvel

#include "net/Connection.h"

#include "common/TextEncoding.h"

#include <string>
#include <utility>

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
        return "Connecting... ( " + visibleText(toUtf8(socket.remoteHost())) + ":" +
               std::to_string(socket.remotePort()) + " )";
    case SocketState::connected:
        return "Connected (" + socket.remoteAddress() + ":" + std::to_string(socket.remotePort()) + ")";
    case SocketState::closing:
        return "Closing socket...";
    case SocketState::error:
        return "ERROR";
    }
    return {};
}

void Connection::Connect(int site) {
    Site& target = at(sites_, site);
    if (target.wSock->state() != SocketState::closed) {
        ResetSession(site);
    }
    const bool viaProxy = target.config.usesslproxy;
    const std::string& host = viaProxy ? settings_.ssl_tunnel_host : target.config.host;
    const std::int32_t port = viaProxy ? settings_.ssl_tunnel_port : target.config.port;
    if (port < 1 || port > 65535) {
        log_.LogConsole(site,
                        "Can't connect: " + std::to_string(port) + " is no port (1 - 65535)" +
                            (viaProxy ? ", see ssl_tunnel_host and ssl_tunnel_port in settings.ini" : ""));
        return;
    }
    SiteSession& session = target.session;
    log_.LogConsole(site, std::exchange(session.sConsolePartial, {}));
    session.telnet = {};
    session.seenTexts = {};
    session.encoding = TextEncoding::utf8;
    log_.tell(site, {});
    target.wSock->Connect(host, port);
}

void Connection::ResetSession(int site) {
    Site& target = at(sites_, site);
    SiteSession& session = target.session;
    target.wSock->Close();
    session.bLoggedIn = false;
    session.bAwaitingReply = false;
    session.isGreeted = false;
    session.sCwd = "/";
    session.sReplyBuffer.clear();
    log_.LogConsole(site, "----------- connection closed -----------");
    for (Command& slot : session.CommandQueue) {
        slot.sCommand.clear();
    }
    session.iQueueHead = 0;
    session.Users = emptyUserTable();
    session.Groups = emptyGroupTable();
    for (AccountView* const view : {&session.userView, &session.groupView}) {
        *view = {.order = view->order, .drafts = std::move(view->drafts)};
    }
    session.activity = {};
    session.activityRows = {};
    session.browser.since = RemoteList::Since::connectionEnded;
    views_.sessionReset(site);
    views_.listingChanged(site);
}

} // namespace corvel

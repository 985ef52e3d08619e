#include "net/Connection.h"

#include <string>
#include <utility>

namespace corvel {

void Connection::Connect(int site) {
    Site& target = at(sites_, site);
    if (target.wSock->state() != SocketState::closed) {
        ResetSession(site);
    }
    const bool viaProxy = target.config.usesslproxy;
    const std::string& host = viaProxy ? settings_.ssl_tunnel_host : target.config.host;
    const std::int32_t port = viaProxy ? settings_.ssl_tunnel_port : target.config.port;
    if (port < 1 || port > 65535) {
        log_.LogConsole(site, "Can't connect: " + std::to_string(port) + " is no port (1 - 65535)");
        return;
    }
    target.session.encoding = TextEncoding::utf8;
    target.session.lastErrorLine.clear();
    views_.lastErrorChanged(site);
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

void Connection::connected(int site) {
    log_.LogConsole(site, "wSock_Connect()");
}

void Connection::closedByPeer(int site) {
    log_.LogConsole(site, "wSock_Close()");
    ResetSession(site);
}

void Connection::failed(int site, std::string_view description, int number) {
    log_.LogConsole(site,
                    "wSock_Error() -> " + std::string(description) + " (" + std::to_string(number) + ")");
    ResetSession(site);
}

} // namespace corvel

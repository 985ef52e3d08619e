#include "net/StatusTexts.h"

#include "admin/ShownCommand.h"
#include "common/ShownText.h"

#include <algorithm>

namespace corvel {

namespace {

// Whether a connection stands whose server has let nobody in.
bool isKeptOut(const Site& site) {
    return site.wSock->state() == SocketState::connected && !site.session.bLoggedIn &&
           !site.session.loginRefusal.empty();
}

std::string silenceText(const Site& site, std::int64_t now, const Settings& settings) {
    constexpr std::int64_t shortest = 2000;
    const SiteSession& session = site.session;
    const bool isGreetingDue = site.wSock->state() == SocketState::connected && !session.isGreeted &&
                               session.encryption != Encryption::handshake;
    const std::int64_t silence =
        now -
        (isGreetingDue ? session.lastHeardClock : std::max(session.lastHeardClock, session.currentSentClock));
    if ((!session.bAwaitingReply && !isGreetingDue) || silence < shortest) {
        return {};
    }
    const std::string what = isGreetingDue && !session.bAwaitingReply
                                 ? "the greeting"
                                 : shownLine(shownCommand(session.current.sCommand, settings));
    return "waiting " + durationText(silence) + " for " + what;
}

} // namespace

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

std::string loginText(const Site& site) {
    return site.session.bLoggedIn ? "logged in as " + shownName(site.config.user)
           : isKeptOut(site)      ? "not logged in: " + shownLine(site.session.loginRefusal)
                                  : std::string();
}

std::string lastErrorText(const Site& site) {
    const SiteSession& session = site.session;
    const bool isSaid = isKeptOut(site) && session.lastErrorLine == session.loginRefusal;
    return session.lastErrorLine.empty() || isSaid
               ? std::string()
               : session.lastErrorTime + " " + shownLine(session.lastErrorLine);
}

std::string waitingText(const Site& site, std::int64_t now, std::size_t waitingJobs,
                        const Settings& settings) {
    const std::string silence = silenceText(site, now, settings);
    const std::string jobs = waitingJobs == 0 ? "" : std::to_string(waitingJobs) + " waiting";
    return silence + (silence.empty() || jobs.empty() ? "" : ", ") + jobs;
}

std::string durationText(std::int64_t milliseconds) {
    const std::int64_t seconds = milliseconds / 1000;
    return seconds < 2    ? std::to_string(seconds) + "." + std::to_string(milliseconds % 1000 / 100) + " s"
           : seconds < 60 ? std::to_string(seconds) + " s"
                          : std::to_string(seconds / 60) + " min " + std::to_string(seconds % 60) + " s";
}

} // namespace corvel

#include "net/CommandChannel.h"

#include "admin/ShownCommand.h"
#include "common/Errors.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "common/TextEncoding.h"
#include "config/RememberedServers.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace corvel {

namespace {

// The first slot from the ring's head on whose emptiness is as asked; nothing if there is none.
Command* findSlot(SiteSession& session, bool empty) {
    for (std::size_t i = 0; i < SiteSession::queueSlots; ++i) {
        Command& slot = session.CommandQueue[(session.iQueueHead + i) % SiteSession::queueSlots];
        if (slot.sCommand.empty() == empty) {
            return &slot;
        }
    }
    return nullptr;
}

// On this port TLS begins with the first byte (RFC 4217, section 2).
constexpr std::int32_t implicitTlsPort = 990;

} // namespace

void CommandChannel::Connect(int site) {
    Site& target = at(sites_, site);
    if (target.wSock->state() != SocketState::closed) {
        ResetSession(site);
    }
    const bool encrypts = isToBeEncrypted(target.config);
    const bool viaProxy = target.config.usesslproxy && !encrypts;
    const std::string& host = viaProxy ? services_.settings.ssl_tunnel_host : target.config.host;
    const std::int32_t port = viaProxy ? services_.settings.ssl_tunnel_port : target.config.port;
    if (port < 1 || port > 65535) {
        services_.log.LogConsole(
            site, "Can't connect: " + std::to_string(port) + " is no port (1 - 65535)" +
                      (viaProxy ? ", see ssl_tunnel_host and ssl_tunnel_port in settings.ini" : ""));
        return;
    }
    SiteSession& session = target.session;
    services_.log.LogConsole(site, std::exchange(session.sConsolePartial, {}), LogLine::reply);
    session.telnet = {};
    session.seenTexts = {};
    session.encoding = TextEncoding::utf8;
    session.padsListings = corvel::padsListings(store_, target.config.host, target.config.port);
    services_.log.tell(site, target.config.pass.empty()
                                 ? "No password is kept for this site: type it in Sites > Edit..."
                                 : "");
    session.loginRefusal.clear();
    session.encryption = !encrypts                 ? Encryption::none
                         : port == implicitTlsPort ? Encryption::handshake
                                                   : Encryption::greeting;
    target.wSock->Connect(host, port, encrypts);
}

void CommandChannel::Connected(int site) {
    at(sites_, site).session.lastHeardClock = services_.log.clock().milliseconds();
    if (at(sites_, site).session.encryption == Encryption::handshake) {
        startEncryption(site);
    } else {
        services_.log.LogConsole(site, "wSock_Connect()");
    }
}

void CommandChannel::startEncryption(int site) {
    Socket& socket = *at(sites_, site).wSock;
    socket.StartEncryption(trustedFingerprint(store_, socket.remoteHost(), socket.remotePort()));
    services_.views.encryptionChanged(site);
}

void CommandChannel::Encrypted(int site) {
    SiteSession& session = at(sites_, site).session;
    session.encryption = Encryption::on;
    services_.views.encryptionChanged(site);
    if (session.isGreeted) {
        logIn(site, 220);
    } else {
        services_.log.LogConsole(site, "wSock_Connect()");
    }
}

void CommandChannel::Refuse(int site, std::string_view why) {
    const std::string line = "Not encrypted, closing the connection: " + std::string(why);
    services_.log.LogConsole(site, line);
    services_.log.tell(site, line);
    ResetSession(site);
}

void CommandChannel::ResetSession(int site) {
    Site& target = at(sites_, site);
    SiteSession& session = target.session;
    target.wSock->Close();
    session.bLoggedIn = false;
    session.bAwaitingReply = false;
    session.isGreeted = false;
    session.isUserSent = false;
    session.encryption = Encryption::none;
    session.sCwd = "/";
    session.sReplyBuffer.clear();
    session.reader = {};
    services_.log.LogConsole(site, "----------- connection closed -----------");
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
    services_.views.sessionReset(site);
    services_.views.listingChanged(site);
}

void reportProblem(const ReplyServices& services, const Reply& reply, std::string_view problem) {
    services.log.LogConsole(reply.site, "Reply to \"" +
                                            shownCommand(reply.command.sCommand, services.settings) +
                                            "\": " + std::string(problem));
}

bool CommandChannel::SendCommand(int site, const Command& command) {
    Site& target = at(sites_, site);
    if (!isOneLine(command.sCommand)) {
        services_.log.LogConsole(site, notOneLine);
        return false;
    }
    if (target.wSock->state() != SocketState::connected) {
        return false;
    }
    if (command.sCommand.empty()) {
        SendNext(site);
        return false;
    }
    Command* const slot = findSlot(target.session, true);
    if (slot == nullptr) {
        return false;
    }
    *slot = command;
    SendNext(site);
    return true;
}

void CommandChannel::SendNext(int site) {
    Site& target = at(sites_, site);
    SiteSession& session = target.session;
    if (target.wSock->state() != SocketState::connected) {
        ResetSession(site);
        return;
    }
    if (session.bAwaitingReply || session.isHeldBack()) {
        return;
    }
    Command* const slot = findSlot(session, false);
    if (slot == nullptr) {
        return;
    }
    // The head stays on the slot that is emptied here, so a command that is queued next goes out next.
    session.iQueueHead = static_cast<std::size_t>(slot - session.CommandQueue.data());
    transmit(site, std::exchange(*slot, {}));
}

void CommandChannel::transmit(int site, Command command) {
    Site& target = at(sites_, site);
    SiteSession& session = target.session;
    session.bAwaitingReply = true;
    session.reader = {}; // what came without being asked for is no answer to this
    session.current = std::move(command);
    session.currentSentAt = services_.log.clock().timeOfDay();
    session.currentSentClock = services_.log.clock().milliseconds();
    session.isUserSent = session.isUserSent || toUpper(session.current.sCommand.substr(0, 5)) == "USER ";
    std::string line = telnetEscaped(session.current.sCommand).append(lineEnd);
    target.wSock->Send(line);
    if (session.current.iHandler != handler::browser && changesDirectory(session.current.sCommand)) {
        session.browser.since = RemoteList::Since::movedAway;
        services_.views.listingChanged(site);
    }
    std::string logged = loggedCommand(session.current.sCommand);
    if (logged != session.current.sCommand) {
        wipe(line);
        wipe(session.current.sCommand);
    }
    session.current.sCommand = std::move(logged);
    echo(site);
}

bool CommandChannel::SendNextBatchLine(int site, std::int32_t handler) {
    std::deque<std::string>& lines = at(sites_, site).session.sBatchLines;
    while (!lines.empty()) {
        const std::string line = std::move(lines.front());
        lines.pop_front();
        SendCommand(site, {.sCommand = line, .bQuiet = true, .iHandler = handler, .iTag = 0});
        if (isOneLine(line)) {
            return true;
        }
    }
    return false;
}

void CommandChannel::ReplyRouter(int site, std::string_view bytes) {
    SiteSession& session = at(sites_, site).session;
    const std::string data = session.telnet.read(bytes);
    session.lastHeardClock = services_.log.clock().milliseconds();
    session.seenTexts.read(data);
    session.encoding = session.seenTexts.encoding();
    if (!session.current.bQuiet) {
        showWholeLines(site, data);
    }
    const ReplyProgress progress = readLines(site, data);
    const std::size_t replyEnd = session.sReplyBuffer.finalLineEnd();
    if (session.encryption == Encryption::consent && replyEnd > 0 &&
        (replyEnd < session.sReplyBuffer.size() || !bytes.ends_with('\n'))) {
        // Whoever sent it in clear need not be who is going to encrypt.
        Refuse(site, "something follows the reply to AUTH TLS");
    } else if (progress == ReplyProgress::complete) {
        routeReply(site, data);
    } else if (progress != ReplyProgress::incomplete) {
        const std::string what = progress == ReplyProgress::lineTooLong
                                     ? "line of more than 64 KiB"
                                     : "of more than 32 MiB without an end";
        services_.log.LogConsole(site, "Reply " + what + ", closing the connection");
        ResetSession(site);
    }
}

// Hands the lines that data makes whole to the reader of the handler: spread over the events in which they
// arrive, no reply holds up the window at its end.
ReplyProgress CommandChannel::readLines(int site, std::string_view data) {
    SiteSession& session = at(sites_, site).session;
    const ReplyHandler* const handler = handlerOf(session.current.iHandler);
    const bool isRead = session.bLoggedIn && handler != nullptr && handler->begin != nullptr;
    if (isRead && std::holds_alternative<std::monostate>(session.reader)) {
        session.reader = handler->begin(services_, site, session);
    }
    return std::visit(
        [&](auto& reader) {
            return session.sReplyBuffer.append(data,
                                               [&reader](std::string_view line) { read(reader, line); });
        },
        session.reader);
}

const ReplyHandler* CommandChannel::handlerOf(std::int32_t code) const {
    const auto found = std::ranges::find(handlers_, code, &ReplyHandler::code);
    return found == handlers_.end() ? nullptr : &*found;
}

void CommandChannel::echo(int site) {
    const SiteSession& session = at(sites_, site).session;
    const ReplyHandler* const handler = handlerOf(session.current.iHandler);
    if (handler != nullptr && handler->echo &&
        (handler->echo != LogKind::console || !session.current.bQuiet)) {
        services_.log.Log(site, *handler->echo,
                          "> " + shownCommand(session.current.sCommand, services_.settings),
                          LogLine::command);
    }
}

// Logs what has become whole lines; the rest waits for what follows, wherever the cut fell. Only the new
// bytes are searched, and the last byte held back, which may be the CR of their LF.
void CommandChannel::showWholeLines(int site, std::string_view data) {
    SiteSession& session = at(sites_, site).session;
    std::string& text = session.sConsolePartial;
    const std::size_t searchFrom = text.empty() ? 0 : text.size() - 1;
    text += data;
    const std::size_t end = std::string_view(text).substr(searchFrom).rfind(lineEnd);
    if (end == std::string_view::npos) {
        return;
    }
    std::string rest = text.substr(searchFrom + end + lineEnd.size());
    text.resize(text.size() - rest.size());
    const std::string whole = std::exchange(text, std::move(rest));
    services_.log.LogConsole(site, whole, LogLine::reply);
}

void CommandChannel::routeReply(int site, std::string_view lastChunk) {
    SiteSession& session = at(sites_, site).session;
    const std::string first = session.sReplyBuffer.firstLine();
    const std::string last = session.sReplyBuffer.lastLine();
    const std::string chunk =
        endOfLines(session.sReplyBuffer.begunLine().append(lastChunk), lastChunk.size());
    session.sReplyBuffer.clear();
    const int code = static_cast<int>(leadingNumber(std::string_view(last).substr(0, 3)));
    session.bAwaitingReply = false;
    session.isGreeted = true;
    const std::int64_t waited = services_.log.clock().milliseconds() - session.currentSentClock;
    session.answers.push_back({.command = session.current,
                               .code = code,
                               .lastLine = last,
                               .sentAt = session.currentSentAt,
                               .milliseconds = static_cast<std::uint32_t>(waited)});
    if (code >= firstRefusal) {
        session.loginRefusal = session.bLoggedIn ? std::string() : last;
        if (session.bLoggedIn || !at(sites_, site).config.pass.empty()) { // else that it has none explains it
            services_.log.tell(site, last);
        }
    }
    if (session.isHeldBack()) {
        goOnToEncrypt(site, code, last);
        return;
    }
    const ReplyHandler* const handler = handlerOf(session.current.iHandler);
    if (!session.bLoggedIn) {
        logIn(site, code);
    } else if (handler != nullptr) {
        Reply reply{.site = site,
                    .command = session.current,
                    .session = session,
                    .reader = std::exchange(session.reader, {}),
                    .firstLine = first,
                    .lastChunk = chunk,
                    .lastLine = last,
                    .code = code};
        try {
            handler->handle(services_, reply);
        } catch (const ParseError& error) {
            reportProblem(services_, reply, describe(error));
        }
    }
    SendNext(site);
}

bool CommandChannel::isToBeEncrypted(const SiteConfig& config) const {
    return config.usesslproxy && services_.settings.ssl_tunnel_host.empty();
}

// What a reply means that comes in clear where nothing else may (RFC 4217, section 4): the greeting, and then
// the consent to AUTH TLS.
void CommandChannel::goOnToEncrypt(int site, int code, std::string_view lastLine) {
    SiteSession& session = at(sites_, site).session;
    if (session.encryption == Encryption::greeting && code == 220) {
        session.encryption = Encryption::consent;
        transmit(site, {.sCommand = "AUTH TLS", .bQuiet = false});
    } else if (session.encryption == Encryption::consent && code == 234) {
        session.encryption = Encryption::handshake;
        session.telnet = {};
        startEncryption(site);
    } else {
        Refuse(site, "the server said \"" + std::string(lastLine) + '"');
    }
}

// What the login dialogue (RFC 959, section 5.4) does about a reply that arrived before the login. One that
// is no part of it gives nothing: the person decides what comes next.
void CommandChannel::logIn(int site, int code) {
    Site& target = at(sites_, site);
    const SiteConfig& config = target.config;
    const bool encrypts = isToBeEncrypted(config);
    if (encrypts && target.session.encryption != Encryption::on && (code == 220 || code == 331)) {
        Refuse(site, "the site was changed meanwhile");
    } else if (code == 220) { // through the proxy the user name tells the server that is meant
        const std::string server = "@" + config.host + ":" + std::to_string(config.port);
        const bool viaProxy = config.usesslproxy && !encrypts;
        SendCommand(site, {.sCommand = "USER " + config.user + (viaProxy ? server : ""), .bQuiet = false});
    } else if (code == 331 && target.session.isUserSent) {
        SendCommand(site, {.sCommand = "PASS " + config.pass, .bQuiet = false});
    } else if (code == 230) {
        target.session.bLoggedIn = true;
        target.session.sCwd = "/";
        SendCommand(site, {.sCommand = "SITE CorvelExt usertable", .iHandler = handler::userTable});
        SendCommand(site, {.sCommand = "SITE CorvelExt grouptable", .iHandler = handler::groupTable});
        SendCommand(site, {.sCommand = "CWD /", .iHandler = handler::browser});
    }
}

} // namespace corvel

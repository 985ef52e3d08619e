#pragma once

#include "common/Command.h"
#include "common/Ports.h"
#include "config/Settings.h"
#include "net/SiteSession.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvel {

// Writes the three logs of every site. A message is bytes of the site's connection; it is split at CR LF, and
// its empty lines are left out.
class ConsoleLog {
  public:
    // All three are borrowed and must outlive the log.
    ConsoleLog(Sites& sites, const Clock& clock, Views& views)
        : sites_(sites), clock_(clock), views_(views) {}

    // line: what the lines of the message are.
    void LogConsole(int site, std::string_view message, LogLine line = LogLine::event) {
        Log(site, LogKind::console, message, line);
    }
    void LogCommandResults(int site, std::string_view message, LogLine line = LogLine::event) {
        Log(site, LogKind::commandResults, message, line);
    }
    void LogBrowserReply(int site, std::string_view message, LogLine line = LogLine::event) {
        Log(site, LogKind::browserReply, message, line);
    }
    void Log(int site, LogKind log, std::string_view message, LogLine line = LogLine::event);
    void clear(int site, LogKind log);
    // Makes line what the status bar says: what the server, or the program itself, refused last. Empty: it
    // says nothing any more.
    void tell(int site, std::string_view line);

    const Clock& clock() const { return clock_; }

  private:
    Sites& sites_;
    const Clock& clock_;
    Views& views_;
};

inline void ConsoleLog::Log(int site, LogKind log, std::string_view message, LogLine line) {
    logOf(at(sites_, site).session, log).append(message, clock_.timeOfDay(), line);
    views_.logChanged(site, log);
}

inline void ConsoleLog::clear(int site, LogKind log) {
    logOf(at(sites_, site).session, log).clear();
    views_.logChanged(site, log);
}

inline void ConsoleLog::tell(int site, std::string_view line) {
    SiteSession& session = at(sites_, site).session;
    if (line.empty() && session.lastErrorLine.empty()) {
        return;
    }
    session.lastErrorLine = line;
    session.lastErrorTime = clock_.timeOfDay();
    session.isErrorUnseen = !line.empty();
    views_.lastErrorChanged(site);
}

class CommandChannel;

// A complete reply on its way to its handler. What it points to is borrowed for the time of the call.
struct Reply {
    int site = 0;
    Command command; // that it answers, a password masked
    SiteSession& session;
    ReplyReader reader; // that its handler has begun, with all of its lines
    std::string_view firstLine;
    std::string_view lastChunk; // the bytes that completed it, see endOfLines
    std::string_view lastLine;  // the last one that is not empty
    int code = 0;               // of that line
};

inline bool isSuccess(const Reply& reply) {
    return reply.code >= 200 && reply.code <= 299;
}

// What a handler may use.
struct ReplyServices {
    CommandChannel& channel;
    ConsoleLog& log;
    Views& views;
    const Settings& settings;
};

// Says on the console what is wrong with a reply, and which command it answers. problem: one line.
void reportProblem(const ReplyServices& services, const Reply& reply, std::string_view problem);

// What is said about a command that no line of a control connection can carry.
inline constexpr std::string_view notOneLine = "Command not sent: it holds a line break or a NUL character";

// One kind of reply: the log that shows its commands as they go out (the console no quiet ones), if any, what
// is done with the complete answer, and what reads its lines until then, if anything does. A reader comes
// back as the reply's. A handler may throw ParseError: the console says so, and the channel goes on.
struct ReplyHandler {
    std::int32_t code;
    std::optional<LogKind> echo;
    void (*handle)(const ReplyServices&, Reply&);
    ReplyReader (*begin)(const ReplyServices&, int site, SiteSession&) = nullptr;
};

// The control connections of the sites: opens and ends them, queues, sends and answers, with one command
// outstanding per site.
class CommandChannel {
  public:
    // All are borrowed and must outlive the channel. settings: the address of the TLS-wrapping proxy. store:
    // the certificates that are trusted. handlers: the table of reply kinds; a code that is not in it is sent
    // without echo, and its reply is shown on the console only.
    CommandChannel(Sites& sites, ConsoleLog& log, Views& views, const Settings& settings,
                   const StateStore& store, std::span<const ReplyHandler> handlers)
        : sites_(sites), services_{*this, log, views, settings}, store_(store), handlers_(handlers) {}

    // Starts to connect the site, directly or through the proxy; a connection that is not closed is ended
    // first. A port outside 1 to 65535 gets one console line and no connection. What the console held back of
    // the last one is shown first. A site that is to use a proxy where none is configured encrypts by itself:
    // from the first byte on port 990, with AUTH TLS on every other (RFC 4217).
    void Connect(int site);

    // The site's socket has connected.
    void Connected(int site);

    // The handshake is over: what has waited for it goes out.
    void Encrypted(int site);

    // Ends a connection that cannot be encrypted, or shall not be; the console and the status bar say why.
    void Refuse(int site, std::string_view why);

    // Ends the connection and brings the session back to its start, but for the command last sent, the
    // batch lines and the console's held-back line, which are kept. Everything that ends one runs through
    // here.
    void ResetSession(int site);

    // Puts the command into the first free slot of the ring, looking from its head, and sends it if nothing
    // is outstanding. False when it was dropped: not connected, all slots taken, nothing to send (then the
    // next one that waits goes out), or a line break or NUL in it, about which the console says one line.
    bool SendCommand(int site, const Command& command);

    // Sends the next waiting command if none is outstanding; ends the connection if there is none.
    void SendNext(int site);

    // Queues the next line of the site's batch; false when there is none left.
    bool SendNextBatchLine(int site, std::int32_t handler);

    // Takes bytes from the site's socket: shows them, and deals with the reply that they complete.
    void ReplyRouter(int site, std::string_view bytes);

  private:
    const ReplyHandler* handlerOf(std::int32_t code) const;
    void echo(int site);
    void showWholeLines(int site, std::string_view data);
    ReplyProgress readLines(int site, std::string_view data);
    void routeReply(int site, std::string_view lastChunk);
    void logIn(int site, int code);
    void transmit(int site, Command command);
    bool isToBeEncrypted(const SiteConfig& config) const;
    void startEncryption(int site);
    void goOnToEncrypt(int site, int code, std::string_view lastLine);

    Sites& sites_;
    ReplyServices services_;
    const StateStore& store_;
    std::span<const ReplyHandler> handlers_;
};

} // namespace corvel

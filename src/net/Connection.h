#pragma once

#include "common/Command.h"
#include "common/Ports.h"
#include "config/Settings.h"
#include "config/Sites.h"
#include "net/SiteSession.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// Writes the three logs of every site. A message is bytes of the site's connection; it is split at CR LF, and
// its empty lines are left out.
class ConsoleLog {
  public:
    // All three are borrowed and must outlive the log.
    ConsoleLog(Sites& sites, const Clock& clock, Views& views)
        : sites_(sites), clock_(clock), views_(views) {}

    void LogConsole(int site, std::string_view message) { Log(site, LogKind::console, message); }
    void LogCommandResults(int site, std::string_view message) {
        Log(site, LogKind::commandResults, message);
    }
    void LogBrowserReply(int site, std::string_view message) { Log(site, LogKind::browserReply, message); }
    void Log(int site, LogKind log, std::string_view message);
    // Makes line what the status bar says: what the server, or the program itself, refused last.
    void tell(int site, std::string_view line);

  private:
    Sites& sites_;
    const Clock& clock_;
    Views& views_;
};

inline void ConsoleLog::Log(int site, LogKind log, std::string_view message) {
    SiteSession& session = at(sites_, site).session;
    LogText& text = log == LogKind::console          ? session.consoleLog
                    : log == LogKind::commandResults ? session.commandResultsLog
                                                     : session.browserReplyLog;
    text.append(message, clock_.timeOfDay());
    views_.logChanged(site, log);
}

inline void ConsoleLog::tell(int site, std::string_view line) {
    at(sites_, site).session.lastErrorLine = line;
    views_.lastErrorChanged(site);
}

// What a person reads about the state of a socket, such as "Connected (10.0.0.5:21)". The host of state 6 is
// the one that was configured, the one of state 7 its address. UTF-8.
std::string SocketStateText(const Socket& socket);

// Opens and ends the control connections. Everything that ends one runs through ResetSession.
class Connection {
  public:
    // All are borrowed and must outlive the connection. settings: the address of the TLS-wrapping proxy.
    Connection(Sites& sites, ConsoleLog& log, Views& views, const Settings& settings)
        : sites_(sites), log_(log), views_(views), settings_(settings) {}

    // Starts to connect the site, directly or through the proxy; a connection that is not closed is ended
    // first. A port outside 1 to 65535 gets one console line and no connection. What the console held back of
    // the last one is shown first.
    void Connect(int site);

    // Ends the connection and brings the session back to its start, but for the command last sent, the
    // batch lines and the console's held-back line, which are kept.
    void ResetSession(int site);

  private:
    Sites& sites_;
    ConsoleLog& log_;
    Views& views_;
    const Settings& settings_;
};

} // namespace corvel

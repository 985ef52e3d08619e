#pragma once

#include "common/ports/Clock.h"
#include "common/ports/Views.h"
#include "net/SiteSession.h"

#include <string_view>

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

} // namespace corvel

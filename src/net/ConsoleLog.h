#pragma once

#include "common/ports/Clock.h"
#include "common/ports/Views.h"
#include "net/SiteSession.h"

#include <string_view>

namespace corvel {

// Writes the three logs of every site. A message is bytes of the site's connection; it is split at CR LF, and
// its empty lines are left out. What steers a display is written as visible symbols.
class ConsoleLog {
  public:
    // All three are borrowed and must outlive the log.
    ConsoleLog(Sites& sites, const Clock& clock, Views& views)
        : sites_(sites), clock_(clock), views_(views) {}

    // One line each: the time of day, a blank and the line, with a CR LF behind it.
    void LogConsole(int site, std::string_view message);
    void LogCommandResults(int site, std::string_view message);

    // One line each: the time of day in brackets, a blank and the line, with a CR LF in front of it
    // where the log is not empty.
    void LogBrowserReply(int site, std::string_view message);

    // Any of the three.
    void Log(int site, LogKind log, std::string_view message);

  private:
    void logTimed(int site, std::string_view message, LogText& log, LogKind kind);

    Sites& sites_;
    const Clock& clock_;
    Views& views_;
};

} // namespace corvel

#pragma once

#include "config/Settings.h"
#include "net/ConsoleLog.h"
#include "net/SiteSession.h"

#include <string_view>

namespace corvel {

// Opens and ends the control connections. Everything that ends one runs through ResetSession.
class Connection {
  public:
    // All are borrowed and must outlive the connection. settings: the address of the TLS-wrapping proxy.
    Connection(Sites& sites, ConsoleLog& log, Views& views, const Settings& settings)
        : sites_(sites), log_(log), views_(views), settings_(settings) {}

    // Starts to connect the site, directly or through the proxy; a connection that is not closed is ended
    // first. A port outside 1 to 65535 gets one console line and no connection.
    void Connect(int site);

    // Ends the connection and brings the session back to its start, but for the command last sent, the
    // batch lines and the console's held-back line, which are kept.
    void ResetSession(int site);

    // The socket's own news.
    void connected(int site);
    void closedByPeer(int site);
    void failed(int site, std::string_view description, int number);

  private:
    Sites& sites_;
    ConsoleLog& log_;
    Views& views_;
    const Settings& settings_;
};

} // namespace corvel

#pragma once

#include "config/Settings.h"
#include "net/SiteSession.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace corvel {

// What a person reads about the state of a socket, such as "Connected (10.0.0.5:21)". The host of state 6 is
// the one that was configured, the one of state 7 its address. UTF-8.
std::string SocketStateText(const Socket& socket);

// What the status bar says of a site beside the state of its socket. All are UTF-8, and empty where there is
// nothing to say.

// "logged in as demo", or why not.
std::string loginText(const Site& site);

// When and how something was refused last, unless loginText says it already.
std::string lastErrorText(const Site& site);

// From two seconds of silence on for how long and for which command the server is waited for, and how many
// jobs wait behind it. now: in the clock's milliseconds.
std::string waitingText(const Site& site, std::int64_t now, std::size_t waitingJobs,
                        const Settings& settings);

// "0.7 s", "12 s", "3 min 5 s".
std::string durationText(std::int64_t milliseconds);

} // namespace corvel

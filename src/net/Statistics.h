#pragma once

#include "common/Text.h"
#include "net/SiteSession.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// All that the statistics, the window's caption and the tray icon depend on.
struct Status {
    bool hasSites = false;
    std::optional<std::string> sitename; // of the current site, UTF-8; none: there is no current site
    bool isOnline = false;               // the current site is logged in
    ActivityCounters activity;           // of the current site

    bool operator==(const Status&) const = default;
};

// currentSite: 0 for none.
Status statusOf(const Sites& sites, int currentSite);

// The rows of the statistics list, in their order: "sitename", "online_all", "online_transfer", "online_up",
// "online_down", "online_idle", "bandwidth_total", "bandwidth_up", "bandwidth_down". Bandwidths in kB/s.
MenuVariables statisticsRows(const Status& status);

// Four lines for a person: idlers, uploads, downloads, and all connections with all speeds.
std::string statisticsText(const ActivityCounters& activity);

// The transfers in one line, such as "3 up 120 kBps · 1 down 40 kBps"; empty while nobody transfers. UTF-8.
std::string transfersText(const ActivityCounters& activity);

// A caption or a tip: the template of the present state with the rows as its variables; where that is empty,
// the program's name and that of the current site. UTF-8.
std::string statusText(const Status& status, std::string_view onlineTemplate,
                       std::string_view offlineTemplate);

// The key of the image that the tray shows.
std::string_view trayImage(const Status& status);

// How a site's connection is protected, for a person.
struct EncryptionStatus {
    enum class Lock { none, open, closed };
    Lock lock = Lock::none;
    std::string text; // UTF-8; empty where there is nothing to say

    bool operator==(const EncryptionStatus&) const = default;
};

// The key of the lock's picture; empty for none.
std::string_view lockImage(EncryptionStatus::Lock lock);

// Nothing is said of a site that is not connected, nor of one in clear to this machine, where a tunnel may
// begin.
EncryptionStatus encryptionStatus(const Site& site);

} // namespace corvel

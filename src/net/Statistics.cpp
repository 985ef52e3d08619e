#include "net/Statistics.h"

#include "common/TextEncoding.h"

#include <algorithm>
#include <cstdint>

namespace corvel {

namespace {

// Sums of 32-bit counters do not fit into 32 bits.
std::int64_t transfersOf(const ActivityCounters& activity) {
    return std::int64_t{activity.uploaders} + activity.downloaders;
}
std::int64_t bandwidthOf(const ActivityCounters& activity) {
    return std::int64_t{activity.uploadSpeed} + activity.downloadSpeed;
}

std::string line(std::string_view caption, std::int64_t count, std::int64_t speed) {
    return std::string(caption) + std::to_string(count) + " @ " + std::to_string(speed) + " kBps ";
}

} // namespace

Status statusOf(const Sites& sites, int currentSite) {
    Status status = {.hasSites = std::any_of(sites.begin() + 1, sites.end(),
                                             [](const Site& site) { return !site.isRemoved; })};
    if (currentSite > 0) {
        const Site& site = at(sites, currentSite);
        status.sitename = toUtf8(site.config.name);
        status.isOnline = site.session.bLoggedIn;
        status.activity = site.session.activity;
    }
    return status;
}

MenuVariables statisticsRows(const Status& status) {
    const ActivityCounters& activity = status.activity;
    return {
        {"sitename", status.sitename.value_or("")},
        {"online_all", std::to_string(transfersOf(activity) + activity.idlers)},
        {"online_transfer", std::to_string(transfersOf(activity))},
        {"online_up", std::to_string(activity.uploaders)},
        {"online_down", std::to_string(activity.downloaders)},
        {"online_idle", std::to_string(activity.idlers)},
        {"bandwidth_total", std::to_string(bandwidthOf(activity))},
        {"bandwidth_up", std::to_string(activity.uploadSpeed)},
        {"bandwidth_down", std::to_string(activity.downloadSpeed)},
    };
}

std::string statisticsText(const ActivityCounters& activity) {
    return "Idlers: " + std::to_string(activity.idlers) + '\n' +
           line("Upload: ", activity.uploaders, activity.uploadSpeed) + '\n' +
           line("Download: ", activity.downloaders, activity.downloadSpeed) + '\n' +
           line("Total: ", transfersOf(activity) + activity.idlers, bandwidthOf(activity));
}

std::string transfersText(const ActivityCounters& activity) {
    if (activity.uploaders == 0 && activity.downloaders == 0) {
        return {};
    }
    return std::to_string(activity.uploaders) + " up " + std::to_string(activity.uploadSpeed) + " kBps · " +
           std::to_string(activity.downloaders) + " down " + std::to_string(activity.downloadSpeed) + " kBps";
}

std::string statusText(const Status& status, std::string_view onlineTemplate,
                       std::string_view offlineTemplate) {
    const std::string_view wanted = status.isOnline ? onlineTemplate : offlineTemplate;
    if (!wanted.empty()) {
        return ExpandTemplate(wanted, statisticsRows(status));
    }
    return status.sitename ? "Corvel - " + *status.sitename : "Corvel";
}

std::string_view trayImage(const Status& status) {
    const bool isUp = status.activity.uploaders > 0;
    const bool isDown = status.activity.downloaders > 0;
    return !status.hasSites ? "tray-offline"
           : isUp && isDown ? "tray-both"
           : isUp           ? "tray-up"
           : isDown         ? "tray-down"
                            : "tray-idle";
}

std::string_view lockImage(EncryptionStatus::Lock lock) {
    using Lock = EncryptionStatus::Lock;
    return lock == Lock::closed ? "lock-closed" : lock == Lock::open ? "lock-open" : "";
}

EncryptionStatus encryptionStatus(const Site& site) {
    using Lock = EncryptionStatus::Lock;
    if (site.wSock->state() != SocketState::connected) {
        return {};
    }
    if (site.session.isHeldBack()) {
        return {.text = "encrypting..."};
    }
    if (site.session.encryption == Encryption::on) {
        const EncryptionFacts& facts = site.wSock->encryption();
        return {Lock::closed, facts.protocol + (facts.cipher.empty() ? "" : ", " + facts.cipher)};
    }
    const std::string address = site.wSock->remoteAddress();
    const bool isThisMachine =
        address == "::1" || address.starts_with("127.") || address.starts_with("::ffff:127.");
    return isThisMachine ? EncryptionStatus{} : EncryptionStatus{Lock::open, "not encrypted"};
}

} // namespace corvel

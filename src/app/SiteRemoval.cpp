#include "app/SiteRemoval.h"

#include "common/Text.h"

#include <algorithm>

namespace corvel {

std::string removalQuestion(const RemovalLosses& losses) {
    std::string question = "Remove the site \"" + losses.name + "\"? It leaves sites.ini when Corvel closes.";
    const auto add = [&question](bool isLost, const std::string& line) {
        if (isLost) {
            question.append(lineEnd).append(lineEnd).append(line);
        }
    };
    add(losses.isConnected, "Its connection ends.");
    add(!losses.batch.empty(), "Its batch ends at " + losses.batch + " lines.");
    add(losses.hasWaiting, "Commands that wait for it are not sent.");
    add(losses.drafts > 0, "What is typed and not saved is lost, for " + std::to_string(losses.drafts) +
                               (losses.drafts == 1 ? " user or group." : " users and groups."));
    return question;
}

int siteAfterRemoval(const std::vector<int>& sites, int site) {
    const auto place = std::ranges::find(sites, site);
    if (place + 1 < sites.end()) {
        return *(place + 1);
    }
    return place == sites.begin() ? 0 : *(place - 1);
}

} // namespace corvel

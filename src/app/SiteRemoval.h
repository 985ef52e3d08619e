#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace corvel {

// What goes with a site that is removed. Texts are UTF-8.
struct RemovalLosses {
    std::string name; // of the site
    bool isConnected = false;
    std::size_t drafts = 0; // accounts and groups for which something is typed and not saved
    std::string batch;      // how far one has come, as "41 of 300"; empty while none runs
    bool hasWaiting = false;
};

// The question before a site is removed; lines with CR LF between them.
std::string removalQuestion(const RemovalLosses& losses);

// Which site is the current one when site, one of sites, is removed: the next, else the one before, else 0.
int siteAfterRemoval(const std::vector<int>& sites, int site);

} // namespace corvel

#include "app/SitesKeeper.h"

#include "config/PlatformFiles.h"
#include "config/Sites.h"

#include <utility>

namespace corvel {

SitesKeeper::SitesKeeper(Prompts& prompts, FolderLock& lock, const Clock& clock, std::string path)
    : prompts_(prompts), lock_(lock), clock_(clock), path_(std::move(path)) {}

std::vector<SiteConfig> SitesKeeper::load() {
    if (lock_.take()) {
        finishReplacement(path_);
    } else {
        problems_.emplace_back(
            "Another Corvel works on these sites: what is changed here is saved only after "
            "a question.");
    }
    read_ = readFile(path_);
    if (const std::string problem = sitesProblem(read_); !problem.empty()) {
        problems_.push_back("sites.ini gives no sites: " + problem + ". It stays as it is.");
    }
    std::vector<SiteConfig> sites = parseSites(linesOf(read_.bytes));
    textRead_ = sitesText(sites, platformLineEnd);
    return sites;
}

bool SitesKeeper::save(const std::vector<SiteConfig>& sites) {
    const std::string text = sitesText(sites, platformLineEnd);
    const FileContent now = readFile(path_);
    switch (saveStep(read_, now, textRead_, text, lock_.take())) {
    case SaveStep::none:
        break;
    case SaveStep::write:
        return told(replaceFile(path_, text));
    case SaveStep::ask:
        return ask(now, text);
    }
    return true;
}

// The question may never be answered: the session of the person may end before.
bool SitesKeeper::ask(const FileContent& now, const std::string& text) {
    const std::string stamp = clock_.stamp();
    const KeptText kept = keepBeside(path_, text, stamp);
    if (kept.path.empty()) {
        return told({.outcome = SaveResult::Outcome::failed, .reason = kept.reason});
    }
    const std::string problem = sitesProblem(now);
    const std::string reason = !problem.empty() ? "holds no sites that Corvel knows (" + problem + ")"
                               : now == read_   ? "is in the hands of another Corvel"
                                                : "was changed by another program";
    prompts_.AskYesNo(
        "The sites were edited here, and sites.ini " + reason +
            ".\r\n\r\nWrite the sites of this window into sites.ini? The other text is kept beside it."
            "\r\n\r\nWith \"No\", sites.ini stays as it is, and the sites of this window are kept in\r\n" +
            kept.path,
        [this, kept, stamp](bool writesMine) {
            if (writesMine) {
                told(putInPlace(kept.path, path_, stamp));
            }
        });
    return false;
}

// Whether there is nothing to tell.
bool SitesKeeper::told(const SaveResult& result) {
    switch (result.outcome) {
    case SaveResult::Outcome::saved:
        return true;
    case SaveResult::Outcome::locked:
        prompts_.Message("Sites file is locked, can't save it !");
        break;
    case SaveResult::Outcome::failed:
        prompts_.Message("Sites file can't be written: " + result.reason);
        break;
    }
    return false;
}

} // namespace corvel

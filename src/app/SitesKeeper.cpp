#include "app/SitesKeeper.h"

#include "common/Text.h"
#include "config/PlatformFiles.h"
#include "config/Sites.h"

#include <utility>

namespace corvel {

SitesKeeper::SitesKeeper(Prompts& prompts, FolderLock& lock, const Clock& clock, std::string path)
    : prompts_(prompts), lock_(lock), clock_(clock), path_(std::move(path)),
      unsavedPath_(path_ + ".unsaved") {}

SitesKeeper::~SitesKeeper() {
    wipe(read_.bytes);
    wipe(textRead_);
    if (left_) {
        wipe(*left_);
    }
}

std::vector<SiteConfig> SitesKeeper::load() {
    hold_ = lock_.take();
    if (hold_ == FolderHold::ours) {
        finishReplacement(path_);
        finishReplacement(unsavedPath_);
    }
    read_ = readSitesFile(path_);
    if (const std::string problem = sitesProblem(read_); !problem.empty()) {
        problems_.push_back("sites.ini gives no sites: " + problem + ". It stays as it is.");
    }
    std::vector<SiteConfig> sites = parseSites(linesOf(read_.bytes));
    textRead_ = sitesText(sites, platformLineEnd);
    if (hold_ == FolderHold::ours) {
        lookForUnsaved();
    }
    return sites;
}

void SitesKeeper::lookForUnsaved() {
    const FileContent unsaved = readSitesFile(unsavedPath_);
    if (const std::string problem = sitesProblem(unsaved); !problem.empty()) {
        problems_.push_back("sites.ini.unsaved gives no sites: " + problem + ".");
        left_ = unsaved.bytes;
    } else if (unsaved.state == FileContent::State::known && unsaved.bytes == textRead_) {
        dropUnsaved();
    } else if (unsaved.state == FileContent::State::known) {
        left_ = unsaved.bytes;
        offer_ = parseSites(linesOf(unsaved.bytes));
    }
}

void SitesKeeper::takeOffer() {
    offer_.reset();
    left_.reset();
}

void SitesKeeper::leaveOffer() {
    offer_.reset();
    if (std::exchange(left_, std::nullopt)) {
        dropUnsaved();
    }
}

// What another run left there is not written over before a person has seen it.
std::string SitesKeeper::changed(const std::vector<SiteConfig>& sites) {
    if (hold_ != FolderHold::ours) {
        return {};
    }
    if (left_) {
        const KeptText kept = keepBeside(path_, *left_, clock_.stamp());
        if (kept.path.empty()) {
            return kept.reason;
        }
        left_.reset();
    }
    const std::string text = sitesText(sites, platformLineEnd);
    if (text == textRead_) {
        dropUnsaved();
        return {};
    }
    return replaceFile(unsavedPath_, text, Waiting::forNothing).reason;
}

// What is offered and neither taken nor left stays for the next start.
void SitesKeeper::dropUnsaved() {
    if (hold_ == FolderHold::ours && !left_) {
        DeleteFileForce(unsavedPath_);
    }
}

bool SitesKeeper::save(const std::vector<SiteConfig>& sites) {
    const std::string text = sitesText(sites, platformLineEnd);
    const FileContent now = readSitesFile(path_);
    switch (saveStep(read_, now, textRead_, text, lock_.take() != FolderHold::anotherCopys)) {
    case SaveStep::none:
        dropUnsaved();
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
    dropUnsaved(); // it lies there as the other text
    prompts_.AskChoice(
        "The sites were edited here, and sites.ini " + reason +
            ".\r\n\r\nWrite the sites of this window into sites.ini? The other text is kept beside it."
            "\r\n\r\nWith \"keep theirs\" the sites of this window are kept in\r\n" +
            kept.path,
        {.yes = "&write mine", .no = "&keep theirs"}, [this, kept, stamp](bool writesMine) {
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
        dropUnsaved();
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

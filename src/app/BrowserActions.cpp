#include "app/BrowserActions.h"

#include "browser/BrowserCommands.h"
#include "common/TextEncoding.h"

#include <utility>

namespace corvel {

void BrowserActions::root(int site) {
    navigate(site, "/");
}

void BrowserActions::refresh(int site) {
    sendOrTell(site, {listCommand()});
}

void BrowserActions::refreshAndNoop(int site) {
    outbox_.startOrTell(site, LogKind::browserReply, {.commands = mkdirButtonCommands(), .isAtOnce = true});
}

void BrowserActions::open(int site, int row) {
    const BrowserEntry* const entry = entryAt(site, row);
    if (entry == nullptr) {
        return;
    }
    const std::string& sCwd = at(sites_, site).session.sCwd;
    const std::optional<std::string> target = navigationTarget(sCwd, entry->name, entry->access);
    if (target && isUsable(site)) {
        navigate(site, *target);
    }
}

void BrowserActions::remove(int site, int row) {
    const BrowserEntry* const entry = entryAt(site, row);
    if (entry == nullptr) {
        return;
    }
    const SiteSession& session = at(sites_, site).session;
    const std::optional<Deletion> wanted = deletion(*entry);
    if (wanted && isUsable(site)) {
        prompts_.AskYesNo(wanted->question,
                          [this, site, sCwd = session.sCwd, command = wanted->command](bool yes) {
                              if (yes && isIn(site, sCwd)) {
                                  sendOrTell(site, {command});
                              }
                          });
    }
}

void BrowserActions::makeDirectory(int site) {
    if (!isUsable(site)) {
        return;
    }
    const std::string sCwd = at(sites_, site).session.sCwd;
    prompts_.AskText("", std::string(newDirectoryPrompt),
                     [this, site, sCwd](std::optional<std::string> answer) {
                         if (answer && isIn(site, sCwd)) {
                             const TextEncoding encoding = at(sites_, site).session.encoding;
                             sendOrTell(site, makeDirectoryCommands(fromUtf8(*answer, encoding)));
                         }
                     });
}

void BrowserActions::rename(int site, int row, const std::string& newName) {
    const BrowserEntry* const entry = entryAt(site, row);
    if (entry != nullptr && entry->name != newName && isUsable(site)) {
        sendOrTell(site, renameCommands(entry->name, newName));
    }
}

void BrowserActions::sortBy(int site, int column) {
    SiteSession& session = at(sites_, site).session;
    session.browser.sort = columnClick(session.browser.sort, static_cast<BrowserColumn>(column));
    if (session.browser.isArranged) {
        corvel::arrange(session.browser);
    }
    views_.listingChanged(site);
}

void BrowserActions::arrange(int site) {
    SiteSession& session = at(sites_, site).session;
    if (!session.browser.isArranged) {
        corvel::arrange(session.browser);
    }
}

void BrowserActions::selectRow(int site, int row) {
    at(sites_, site).session.browser.row = row;
}

const BrowserEntry* BrowserActions::selectedEntry(int site) const {
    return entryAt(site, at(sites_, site).session.browser.row);
}

const BrowserEntry* BrowserActions::entryAt(int site, int row) const {
    return corvel::entryAt(at(sites_, site).session.browser, row);
}

bool BrowserActions::isUsable(int site) const {
    return isIn(site, at(sites_, site).session.sCwd);
}

std::optional<std::string> BrowserActions::sendIn(int site, std::string_view directory,
                                                  std::vector<Command> commands) {
    const std::string_view reason = whyNotIn(site, directory);
    return reason.empty() ? outbox_.start(site, {std::move(commands)}) : std::string(reason);
}

// Why nothing is to be done with a name in directory; empty where it can be.
std::string_view BrowserActions::whyNotIn(int site, std::string_view directory) const {
    const Site& target = at(sites_, site);
    if (target.wSock->state() != SocketState::connected) {
        return "Nothing was done: the site is not connected";
    }
    const std::string_view reason = whyNotUsable(target.session.browser);
    if (reason.empty() && target.session.sCwd != directory) {
        return "Nothing was done: the browser has gone to another directory since";
    }
    return reason;
}

bool BrowserActions::isIn(int site, std::string_view directory) const {
    const std::string_view reason = whyNotIn(site, directory);
    if (!reason.empty()) {
        at(sites_, site).session.lastErrorLine = reason;
        views_.lastErrorChanged(site);
    }
    return reason.empty();
}

std::optional<std::string> BrowserActions::send(int site, std::vector<Command> commands) {
    return outbox_.start(site, {std::move(commands)});
}

bool BrowserActions::sendOrTell(int site, std::vector<Command> commands) {
    return outbox_.startOrTell(site, LogKind::browserReply, {std::move(commands)});
}

// The rows are of the directory that is left from here until the dialogue about the new one is over.
void BrowserActions::navigate(int site, const std::string& directory) {
    SiteSession& session = at(sites_, site).session;
    const auto over = [this, site, &session](const Receipt& receipt) {
        --session.browser.navigations;
        if (receipt.end == Receipt::End::cancelled && session.browser.navigations == 0) {
            session.sCwd = session.browser.directory;
        }
        views_.listingChanged(site);
    };
    ++session.browser.navigations;
    if (outbox_.startOrTell(site, LogKind::browserReply, {changeDirectoryCommands(directory)}, over)) {
        session.sCwd = directory;
    } else {
        --session.browser.navigations;
    }
    views_.listingChanged(site);
}

} // namespace corvel

#include "app/BrowserActions.h"

#include "browser/BrowserCommands.h"
#include "common/ShownText.h"
#include "config/RememberedServers.h"

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

void BrowserActions::up(int site) {
    const std::string& sCwd = at(sites_, site).session.sCwd;
    const std::optional<std::string> target = navigationTarget(sCwd, "..", "d");
    if (target && isUsable(site)) {
        navigate(site, *target);
    }
}

void BrowserActions::goTo(int site, std::string_view directory) {
    if (directory.size() > 1 && directory.ends_with('/')) {
        directory.remove_suffix(1);
    }
    if (!directory.empty()) {
        navigate(site, std::string(directory));
    }
    views_.pathChanged(site);
}

void BrowserActions::remove(int site, int row) {
    const BrowserEntry* const entry = entryAt(site, row);
    if (entry == nullptr) {
        return;
    }
    const std::optional<Deletion> wanted = deletion(*entry);
    if (!wanted) {
        tell(site, whyNot(site, BrowserAct::remove, {row}));
    } else if (isUsable(site)) {
        askToRemove(site, wanted->question, {wanted->command}, shownName(entry->name));
    }
}

void BrowserActions::remove(int site, const std::vector<int>& rows) {
    if (rows.size() == 1) {
        remove(site, rows.front());
        return;
    }
    if (rows.empty() || !isUsable(site)) {
        return;
    }
    const PickedRows picked = pickedRows(at(sites_, site).session.browser, rows);
    if (picked.entries.empty()) {
        tell(site, whyNot(site, BrowserAct::remove, rows));
        return;
    }
    Deletions wanted = deletions(picked.entries, picked.names);
    const std::size_t count = picked.entries.size();
    askToRemove(site, wanted.question, std::move(wanted.commands),
                count == 1 ? "1 entry" : std::to_string(count) + " entries");
}

// what: for the status bar, since a question about a file does not say which.
void BrowserActions::askToRemove(int site, const std::string& question, std::vector<Command> commands,
                                 const std::string& what) {
    SiteSession& session = at(sites_, site).session;
    session.asked = "Delete " + what + " in " + shownName(session.sCwd) + "?";
    views_.listingChanged(site);
    prompts_.AskYesNo(question, [this, site, sCwd = session.sCwd, commands = std::move(commands),
                                 title = "delete " + what](bool yes) {
        at(sites_, site).session.asked.clear();
        views_.listingChanged(site);
        if (yes && isIn(site, sCwd)) {
            sendOrTell(site, commands, title);
        }
    });
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

bool BrowserActions::arrange(int site) {
    RemoteList& list = at(sites_, site).session.browser;
    return list.isArranged || isOnItsWay(list) || arrangeStep(list);
}

void BrowserActions::acceptPadding(int site) {
    Site& target = at(sites_, site);
    rememberPadding(store_, target.config.host, target.config.port);
    target.session.padsListings = true;
    refresh(site);
}

void BrowserActions::refusePadding(int site) {
    at(sites_, site).session.browser.isPaddingRefused = true;
    views_.listingChanged(site);
}

std::string BrowserActions::whyNot(int site, BrowserAct act, const std::vector<int>& rows) const {
    const Site& target = at(sites_, site);
    if (act != BrowserAct::copyPath && target.wSock->state() != SocketState::connected) {
        return "The site is not connected";
    }
    return std::string(
        corvel::whyNot(act, target.session.browser, rows, !settings_.site_nuke_syntax.empty()));
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
    return reason.empty() ? send(site, std::move(commands)) : std::string(reason);
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
        tell(site, reason);
    }
    return reason.empty();
}

void BrowserActions::tell(int site, std::string_view reason) const {
    outbox_.tell(site, reason);
}

std::optional<std::string> BrowserActions::send(int site, std::vector<Command> commands) {
    return outbox_.start(site, {std::move(commands)}, refreshing(site));
}

bool BrowserActions::sendOrTell(int site, std::vector<Command> commands, std::string title) {
    return outbox_.startOrTell(site, LogKind::browserReply,
                               {.commands = std::move(commands), .title = std::move(title)},
                               refreshing(site));
}

// Lists the directory again where a job has changed something in it and the settings want it so.
Outbox::Ended BrowserActions::refreshing(int site) {
    if (!settings_.browser_refresh_after_change) {
        return {};
    }
    return [this, site](const Receipt& /*receipt*/) {
        const RemoteList& list = at(sites_, site).session.browser;
        if (list.isChanged && whyNotUsable(list).empty()) {
            outbox_.startOrTell(site, LogKind::browserReply,
                                {.commands = {listCommand()}, .wish = "list again"});
        }
    };
}

// The rows are of the directory that is left from here until the dialogue about the new one is over.
void BrowserActions::navigate(int site, const std::string& directory) {
    SiteSession& session = at(sites_, site).session;
    const bool isUp = directory == parentDirectory(session.sCwd);
    const std::string left(isUp ? nameInParent(session.sCwd) : std::string_view());
    const auto over = [this, site, &session](const Receipt& receipt) {
        --session.browser.navigations;
        if (receipt.end == Receipt::End::cancelled && session.browser.navigations == 0) {
            session.sCwd = session.browser.directory;
        }
        session.browser.cameFrom.clear();
        views_.pathChanged(site);
        views_.listingChanged(site);
    };
    ++session.browser.navigations;
    if (outbox_.startOrTell(site, LogKind::browserReply, {changeDirectoryCommands(directory)}, over)) {
        session.sCwd = directory;
        session.browser.cameFrom = left;
        ++session.browser.visits;
    } else {
        --session.browser.navigations;
    }
    views_.listingChanged(site);
}

} // namespace corvel

#include "app/BrowserActions.h"

#include "browser/FileOperations.h"
#include "browser/Navigation.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace corvel {

void BrowserActions::root(int site) {
    if (sendOrTell(site, rootCommands())) {
        at(sites_, site).session.sCwd = "/";
    }
}

void BrowserActions::refresh(int site) {
    sendOrTell(site, refreshCommands());
}

void BrowserActions::refreshAndNoop(int site) {
    sendOrTell(site, mkdirButtonCommands());
}

void BrowserActions::open(int site, int row) {
    const BrowserEntry* const entry = entryAt(site, row);
    if (entry == nullptr) {
        return;
    }
    SiteSession& session = at(sites_, site).session;
    const std::optional<std::string> target = navigationTarget(session.sCwd, entry->name, entry->access);
    if (target && sendOrTell(site, changeDirectoryCommands(*target))) {
        session.sCwd = *target;
    }
}

void BrowserActions::remove(int site, int row) {
    const BrowserEntry* const entry = entryAt(site, row);
    if (entry == nullptr) {
        return;
    }
    const std::optional<Deletion> wanted = deletion(*entry, at(sites_, site).session.encoding);
    if (wanted) {
        prompts_.AskYesNo(wanted->question, DefaultAnswer::no,
                          [this, site, command = wanted->command](bool yes) {
                              if (yes) {
                                  sendOrTell(site, {command});
                              }
                          });
    }
}

void BrowserActions::makeDirectory(int site) {
    prompts_.AskText("", std::string(newDirectoryPrompt), [this, site](std::optional<std::string> answer) {
        if (answer) {
            const TextEncoding encoding = at(sites_, site).session.encoding;
            sendOrTell(site, makeDirectoryCommands(fromUtf8(*answer, encoding).value_or(*answer)));
        }
    });
}

void BrowserActions::rename(int site, int row, const std::string& newName) {
    const BrowserEntry* const entry = entryAt(site, row);
    if (entry != nullptr) {
        sendOrTell(site, renameCommands(entry->name, newName));
    }
}

void BrowserActions::sortBy(int site, int column) {
    SiteSession& session = at(sites_, site).session;
    const BrowserEntry* const selected = selectedEntry(site);
    session.browserSort = columnClick(session.browserSort, static_cast<BrowserColumn>(column));
    session.listingOrder = displayOrder(session.listing, session.browserSort, session.encoding);
    if (selected != nullptr) {
        const auto index = static_cast<std::uint32_t>(selected - session.listing.entries.data());
        const auto place = std::ranges::find(session.listingOrder, index);
        session.browserRow = static_cast<int>(place - session.listingOrder.begin());
    }
    views_.listingChanged(site);
}

void BrowserActions::selectRow(int site, int row) {
    at(sites_, site).session.browserRow = row;
}

const BrowserEntry* BrowserActions::selectedEntry(int site) const {
    return entryAt(site, at(sites_, site).session.browserRow);
}

const BrowserEntry* BrowserActions::entryAt(int site, int row) const {
    const SiteSession& session = at(sites_, site).session;
    const auto index = static_cast<std::size_t>(row);
    return row >= 0 && index < session.listingOrder.size()
               ? &session.listing.entries[session.listingOrder[index]]
               : nullptr;
}

std::optional<std::string> BrowserActions::send(int site, std::vector<Command> commands) {
    return outbox_.start(site, {std::move(commands)});
}

bool BrowserActions::sendOrTell(int site, std::vector<Command> commands) {
    return outbox_.startOrTell(site, LogKind::browserReply, {std::move(commands)});
}

} // namespace corvel

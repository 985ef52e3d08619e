#include "browser/RemoteList.h"

#include "browser/BrowserCommands.h"
#include "common/ShownText.h"
#include "common/Text.h"

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

// Ordering so many rows, beside reading them, takes a few milliseconds.
constexpr std::size_t arrangedAtOnce = 20000;

} // namespace

std::string_view whyNotUsable(const RemoteList& list) {
    if (list.since == RemoteList::Since::connectionEnded) {
        return "Nothing was done: the list is from before the connection ended";
    }
    if (list.navigations > 0) {
        return "Nothing was done: the list of the directory is on its way";
    }
    switch (list.since) {
    case RemoteList::Since::movedAway:
        return "Nothing was done: the server has been sent to another directory, refresh the list first";
    case RemoteList::Since::neverListed:
        return "Nothing was done: no directory is listed yet";
    default:
        return {};
    }
}

std::string emptyReason(const RemoteList& list) {
    if (list.since == RemoteList::Since::neverListed) {
        return "No directory is listed yet.";
    }
    if (list.since == RemoteList::Since::connectionEnded) {
        return "Not connected.";
    }
    if (!list.listing.entries.empty()) {
        return {}; // they are about to be shown
    }
    if (isOnItsWay(list)) {
        return "The list of the directory is on its way.";
    }
    return list.problem.empty() ? "This directory is empty."
                                : "The server refused:\n" + shownLine(list.problem);
}

bool isOnItsWay(const RemoteList& list) {
    return !list.isArranged && list.listing.entries.empty();
}

void dropRows(RemoteList& list, std::string_view directory) {
    if (isOnItsWay(list) && whyNotUsable(list).empty() && list.directory == directory) {
        return; // they are dropped
    }
    const BrowserEntry* const selected = entryAt(list, list.row);
    list.isOfSameDirectory = whyNotUsable(list).empty() && list.directory == directory;
    list.selectedName =
        list.isOfSameDirectory && selected != nullptr ? selected->name : std::string_view(list.cameFrom);
    list.listing = {};
    list.order = {};
    list.ordering.reset();
    list.row = -1;
    list.isArranged = false;
    list.directory = directory;
}

void showListing(RemoteList& list, BrowserListing listing) {
    list.listing = std::move(listing);
    list.ordering.reset();
    list.since = RemoteList::Since::listed;
    list.isChanged = false;
    ++list.listings;
    if (list.listing.entries.size() <= arrangedAtOnce) {
        arrange(list);
    }
}

void arrange(RemoteList& list) {
    while (!arrangeStep(list)) {
    }
}

bool arrangeStep(RemoteList& list) {
    if (!list.ordering || list.ordering->sort() != list.sort) {
        list.ordering.emplace(list.sort);
    }
    if (!list.ordering->step(list.listing)) {
        return false;
    }
    if (const BrowserEntry* const selected = entryAt(list, list.row)) {
        list.selectedName = selected->name;
    }
    list.order = list.ordering->order();
    list.ordering.reset();
    list.isArranged = true;
    const std::string name = std::exchange(list.selectedName, {});
    const auto row =
        name.empty() ? list.order.end() : std::ranges::find(list.order, name, [&list](std::uint32_t index) {
            return list.listing.entries[index].name;
        });
    list.row = row == list.order.end() ? -1 : static_cast<int>(row - list.order.begin());
    return true;
}

const BrowserEntry* entryAt(const RemoteList& list, int row) {
    const auto index = static_cast<std::size_t>(row);
    return row >= 0 && index < list.order.size() ? &list.listing.entries[list.order[index]] : nullptr;
}

PickedRows pickedRows(const RemoteList& list, const std::vector<int>& rows) {
    constexpr std::size_t mostNames = 10;
    PickedRows picked;
    std::size_t links = 0;
    bool hasParent = false;
    for (const int row : rows) {
        const BrowserEntry* const entry = entryAt(list, row);
        if (entry == nullptr) {
            continue;
        }
        if (entry->name == "..") {
            hasParent = true;
        } else if (entry->type == BrowserEntryType::link) {
            ++links;
        } else {
            picked.entries.push_back(entry);
        }
    }
    const auto addLine = [&picked](std::string_view line) {
        picked.names.append(picked.names.empty() ? "" : lineEnd).append(line);
    };
    for (std::size_t i = 0; i < std::min(picked.entries.size(), mostNames); ++i) {
        const BrowserEntry& entry = *picked.entries[i];
        addLine(shownName(entry.name) + (entry.type == BrowserEntryType::directory ? "/" : ""));
    }
    if (picked.entries.size() > mostNames) {
        addLine("... and " + std::to_string(picked.entries.size() - mostNames) + " more");
    }
    const std::string linksLeftOut = links == 0   ? ""
                                     : links == 1 ? "1 link"
                                                  : std::to_string(links) + " links";
    if (hasParent || links > 0) {
        addLine("");
        addLine("Left out: " + linksLeftOut + (hasParent && links > 0 ? " and " : "") +
                (hasParent ? "\"..\"" : ""));
    }
    return picked;
}

std::string pathsOf(const RemoteList& list, const std::vector<int>& rows) {
    std::string paths;
    for (const int row : rows) {
        if (const BrowserEntry* const entry = entryAt(list, row)) {
            const bool isLink = entry->type == BrowserEntryType::link;
            const std::string_view name =
                entry->name.substr(0, isLink ? entry->name.find(linkArrow) : entry->name.size());
            paths.append(paths.empty() ? "" : "\n")
                .append(name == ".." ? parentDirectory(list.directory) : pathIn(list.directory, name));
        }
    }
    return paths.empty() ? list.directory : paths;
}

std::string_view whyNot(BrowserAct act, const RemoteList& list, const std::vector<int>& rows,
                        bool hasNukeSyntax) {
    if (act == BrowserAct::refresh || act == BrowserAct::copyPath) {
        return {};
    }
    if (const std::string_view reason = whyNotUsable(list); !reason.empty()) {
        return reason;
    }
    if (act == BrowserAct::makeDirectory) {
        return {};
    }
    if (act == BrowserAct::up) {
        return list.directory == "/" ? "Nothing is above the root" : "";
    }
    if (act == BrowserAct::nuke && !hasNukeSyntax) {
        return "settings.ini has no site_nuke_syntax";
    }
    if (rows.empty()) {
        return "No row is selected";
    }
    if (act == BrowserAct::remove || act == BrowserAct::permissions) {
        return pickedRows(list, rows).entries.empty() ? "Links and \"..\" are left alone" : "";
    }
    if (rows.size() > 1) {
        return "Several rows are selected";
    }
    const BrowserEntry* const entry = entryAt(list, rows.front());
    if (entry == nullptr || entry->name == "..") {
        return "\"..\" is left alone";
    }
    return act == BrowserAct::hide && typeKey(*entry) != directoryKey ? "Only directories can be hidden" : "";
}

bool changesDirectory(std::string_view command) {
    const std::string verb = toUpper(command.substr(0, command.find(' ')));
    return verb == "CWD" || verb == "CDUP" || verb == "XCWD";
}

} // namespace corvel

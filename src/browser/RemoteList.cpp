#include "browser/RemoteList.h"

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

void dropRows(RemoteList& list, std::string_view directory) {
    const BrowserEntry* const selected = entryAt(list, list.row);
    list.isOfSameDirectory = whyNotUsable(list).empty() && list.directory == directory;
    list.selectedName = list.isOfSameDirectory && selected != nullptr ? selected->name : std::string_view();
    list.listing = {};
    list.order = {};
    list.row = -1;
    list.isArranged = false;
    list.directory = directory;
}

void showListing(RemoteList& list, BrowserListing listing) {
    list.listing = std::move(listing);
    list.since = RemoteList::Since::listed;
    ++list.listings;
    if (list.listing.entries.size() <= arrangedAtOnce) {
        arrange(list);
    }
}

void arrange(RemoteList& list) {
    if (const BrowserEntry* const selected = entryAt(list, list.row)) {
        list.selectedName = selected->name;
    }
    list.order = displayOrder(list.listing, list.sort);
    list.isArranged = true;
    const std::string name = std::exchange(list.selectedName, {});
    const auto row = std::ranges::find(
        list.order, name, [&list](std::uint32_t index) { return list.listing.entries[index].name; });
    list.row = name.empty() || row == list.order.end() ? -1 : static_cast<int>(row - list.order.begin());
}

const BrowserEntry* entryAt(const RemoteList& list, int row) {
    const auto index = static_cast<std::size_t>(row);
    return row >= 0 && index < list.order.size() ? &list.listing.entries[list.order[index]] : nullptr;
}

bool changesDirectory(std::string_view command) {
    const std::string verb = toUpper(command.substr(0, command.find(' ')));
    return verb == "CWD" || verb == "CDUP" || verb == "XCWD";
}

} // namespace corvel

// Replies to STAT -a, and what the browser makes of their entries.
#include "browser/Listing.h"

#include "browser/BrowserCommands.h"
#include "browser/FileDialogs.h"
#include "browser/Order.h"
#include "browser/RemoteList.h"
#include "common/Text.h"
#include "Fuzz.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace corvel::fuzz {

namespace {

using Lines = std::vector<std::string_view>;

bool isSame(const BrowserEntry& one, const BrowserEntry& other) {
    return one.name == other.name && one.date == other.date && one.access == other.access &&
           one.owner == other.owner && one.group == other.group && one.size == other.size &&
           one.type == other.type;
}

// Each line is read for itself, whatever stands around it.
void checkLinesAlone(const BrowserListing& listing, const Lines& lines, ListingOptions options) {
    std::size_t next = 0;
    for (const std::string_view& line : lines) {
        const BrowserListing alone = ParseDirectoryListing(Lines{line}, options);
        require(alone.entries.size() <= 1, "a line has one entry at most");
        for (const BrowserEntry& entry : alone.entries) {
            require(next < listing.entries.size() && isSame(entry, listing.entries[next++]),
                    "a line alone gives the entry that it gives among others");
        }
    }
    require(next == listing.entries.size(), "every entry is of a line");
}

void checkEntry(const BrowserEntry& entry) {
    require(entry.access.size() == 10 && entry.name != ".", "an entry has what every entry has");
    const std::optional<Deletion> wanted = deletion(entry);
    const std::string verb = entry.type == BrowserEntryType::file ? "DELE " : "RMD ";
    require(!wanted || wanted->command.sCommand == verb + std::string(entry.name),
            "a deletion names its entry as it was listed");
    const std::optional<std::string> target = navigationTarget("/pub", entry.name, entry.access);
    if (target && entry.type == BrowserEntryType::directory && entry.name != ".." &&
        entry.name.find('/') == std::string_view::npos) {
        require(parentDirectory(*target) == "/pub" && nameInParent(*target) == entry.name,
                "the way back from a directory leads to where it is");
    }
    const ChmodForm form = chmodForm("/pub", entry);
    const std::optional<Permissions> permissions = permissionsOf(form.txtCHMODval);
    require(permissions && *permissions == form.chkX, "permissions are what their digits say");
}

void checkOrder(const BrowserListing& listing, BrowserSort sort) {
    std::vector<std::uint32_t> order = displayOrder(listing, sort);
    require(
        std::ranges::is_sorted(order, {}, [&](std::uint32_t row) { return typeKey(listing.entries[row]); }),
        "directories come before links and files");
    std::ranges::sort(order);
    for (std::uint32_t row = 0; row < order.size(); ++row) {
        require(order[row] == row, "each entry has one row");
    }
    require(order.size() == listing.entries.size(), "every entry has a row");
}

void checkCells(const BrowserListing& listing) {
    for (std::size_t row = 0; row < listing.entries.size(); ++row) {
        for (std::uint8_t column = 0; column < browserColumnCount; ++column) {
            cellText(listing, row, static_cast<BrowserColumn>(column), ",");
        }
        const std::optional<std::uint64_t> size = sizeNumber(listing.entries[row].size);
        const std::string shown = cellText(listing, row, BrowserColumn::size, ",");
        require(!size || trim(replaceAll(shown, ",", "")) == std::to_string(*size),
                "a size keeps its digits");
    }
}

void checkListing(const Lines& lines, ListingOptions options) {
    const BrowserListing listing = ParseDirectoryListing(lines, options);
    const auto parents =
        static_cast<std::size_t>(std::ranges::count_if(listing.entries, [](const BrowserEntry& entry) {
            return entry.name == ".." && entry.type == BrowserEntryType::directory;
        }));
    require(listing.fileCount + listing.directoryCount + parents == listing.entries.size(),
            "every entry is counted once");
    require(listing.entries.size() + listing.strangeCount <= lines.size(), "a line is one thing");
    require(listing.strangeLines.size() == std::min(listing.strangeCount, mostStrangeLines),
            "the first strange lines are kept");
    checkLinesAlone(listing, lines, options);
    std::ranges::for_each(listing.entries, checkEntry);
    for (std::uint8_t column = options.mergeBlanks ? 0 : 1; column < browserColumnCount; column += 2) {
        const BrowserSort sort{static_cast<BrowserColumn>(column), static_cast<SortOrder>(lines.size() % 2)};
        checkOrder(listing, sort);
        require(columnClick(sort, sort.column) != sort, "a click turns the order");
    }
    checkCells(listing);
}

// The list with all rows selected, and again: the selected entry stays.
void checkRows(const Lines& lines) {
    RemoteList list;
    std::vector<int> rows;
    for (const int selected : {0, 1}) {
        dropRows(list, "/pub");
        showListing(list, ParseDirectoryListing(lines, {}));
        list.row = entryAt(list, selected) == nullptr ? -1 : selected;
    }
    for (int row = 0; entryAt(list, row) != nullptr; ++row) {
        rows.push_back(row);
    }
    const PickedRows picked = pickedRows(list, rows);
    const Deletions wanted = deletions(picked.entries, picked.names);
    require(wanted.commands.size() == picked.entries.size(), "what is picked is deleted");
    require(pathsOf(list, rows).size() >= rows.size(), "each row has a path");
    for (const BrowserAct act : {BrowserAct::rename, BrowserAct::remove, BrowserAct::hide}) {
        whyNot(act, list, rows, false);
    }
    emptyReason(list);
}

void checkReplies(const Lines& lines) {
    for (const std::string_view command : {"CWD /pub", "STAT -a", "PWD"}) {
        for (const int code : {200, 250, 257, 550}) {
            const BrowserReply kind = recogniseBrowserReply(command, lines.front(), lines.back(), code);
            require(kind != BrowserReply::directoryUnknown || command == "PWD", "only PWD asks for a name");
            require(mayList(command, code) || command.starts_with("CWD"), "a refusal to list has lines");
        }
    }
    const std::string directory = directoryOf(lines.front());
    require(directory.size() <= lines.front().size(), "a directory is named in its line");
    require(chattrText(lines.front()).size() <= lines.front().size(), "and so is who sees it");
}

} // namespace

void check(std::string_view bytes) {
    const Lines lines = split(bytes, lineEnd);
    checkListing(lines, {.mergeBlanks = false});
    checkListing(lines, {.mergeBlanks = true});
    checkRows(lines);
    checkReplies(lines);
    changesDirectory(lines.front());
}

void work(std::string_view bytes) {
    const Lines lines = split(bytes, lineEnd);
    RemoteList list;
    dropRows(list, "/pub");
    showListing(list, ParseDirectoryListing(lines, {}));
    displayOrder(list.listing, {BrowserColumn::size, SortOrder::descending});
}

} // namespace corvel::fuzz

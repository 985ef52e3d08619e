#pragma once

#include "browser/Listing.h"
#include "browser/Order.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What a site's browser shows, and of which directory it is. All texts are in the server's bytes.
struct RemoteList {
    // What has happened since the rows were listed. Until they are listed again they may be of another
    // directory than the one in which the server takes a name.
    enum class Since { listed, neverListed, movedAway, connectionEnded };

    BrowserListing listing;
    std::vector<std::uint32_t> order; // the entry in each display row
    BrowserSort sort;
    int row = -1;           // the display row that is selected, -1 for none
    bool isArranged = true; // order is that of listing; a long listing is ordered in turns of its own
    std::optional<Ordering> ordering = {}; // which has begun
    bool isOfSameDirectory = false; // as the listing before; the person's place in the list is kept then
    std::uint64_t listings = 0;     // how many there were
    std::string directory;          // of the rows
    Since since = Since::neverListed;
    int navigations = 0;           // that a person asked for and that are not over
    std::uint64_t visits = 0;      // how often a person has asked for one
    std::string cameFrom = {};     // the entry to be selected in the directory that a navigation goes up to
    std::string problem = {};      // the server's line, where it refused to go there or to list
    bool isChanged = false;        // the server has changed something since the rows were listed
    bool isPaddingRefused = false; // the person does not want this server's listings read as padded ones
    std::string selectedName = {}; // of the row to be selected, while the listing is not arranged
};

// Why nothing is to be done with the rows, for a person to read; empty where they can be acted on.
std::string_view whyNotUsable(const RemoteList& list);

// Why a list without rows has none, for a person to read.
std::string emptyReason(const RemoteList& list);

// Of so many entries a listing takes much memory: it goes as soon as its successor comes.
inline constexpr std::size_t longListing = 100000;

// Whether the rows were dropped for a listing that is not there yet.
bool isOnItsWay(const RemoteList& list);

// Makes room for a listing of directory: the rows go, but for the name of the selected one where directory is
// still the same.
void dropRows(RemoteList& list, std::string_view directory);

// Shows a listing in place of the rows that were dropped, from now on usable. The row with the name that was
// selected is selected. A listing of many entries is not arranged yet.
void showListing(RemoteList& list, BrowserListing listing);

// Orders the rows as list.sort says; the selected entry stays selected. The second does a part of it, and
// gives whether that was the last one.
void arrange(RemoteList& list);
bool arrangeStep(RemoteList& list);

// The entry in a display row, or nothing when there is no such row.
const BrowserEntry* entryAt(const RemoteList& list, int row);

// What of some display rows an action on many of them is about: all but links and "..". The texts are for a
// person to read.
struct PickedRows {
    std::vector<const BrowserEntry*> entries; // of the list, while it has these rows
    std::string names;                        // a line for each, the first of many; with what is left out
};
PickedRows pickedRows(const RemoteList& list, const std::vector<int>& rows);

// The paths of some rows from the root, a line for each; without any the directory itself. In the server's
// bytes.
std::string pathsOf(const RemoteList& list, const std::vector<int>& rows);

// What a person can do in the browser by its menu.
enum class BrowserAct { makeDirectory, rename, remove, permissions, hide, nuke, copyPath, up, refresh };

// Why act cannot be done with those rows, for a person to read; empty where it can, as far as the list
// says. hasNukeSyntax: the settings say how a server is asked to nuke.
std::string_view whyNot(BrowserAct act, const RemoteList& list, const std::vector<int>& rows,
                        bool hasNukeSyntax);

// Whether a command, by its verb, leads to another directory.
bool changesDirectory(std::string_view command);

} // namespace corvel

#pragma once

#include "browser/Listing.h"
#include "common/Command.h"
#include "common/TextEncoding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What the input box for a new directory asks.
inline constexpr std::string_view newDirectoryPrompt = "Please enter a name for the directory:";

// The commands of the browser tab, in the order in which they go out, all quiet (RFC 959, section 4.1.3).
// Names are the server's bytes, relative to the current directory.

// Any command on an entry, whose reply goes to the browser's own log: verb and argument as they stand.
Command fileCommand(std::string_view verb, std::string_view argument);

// Goes to directory; its reply starts the chain that lists it.
std::vector<Command> changeDirectoryCommands(std::string_view directory);

// Lists the current directory, and asks for its name: the next links of the chain. The first is also what the
// refresh button sends.
inline Command listCommand() {
    return {.sCommand = "STAT -a", .iHandler = handler::browser};
}
inline Command printDirectoryCommand() {
    return {.sCommand = "PWD", .iHandler = handler::browser};
}

// The button captioned "mkdir" lists again and keeps the connection alive; directories are made with the
// Insert key.
std::vector<Command> mkdirButtonCommands();

// A deletion that a person has to confirm first.
struct Deletion {
    std::string question; // UTF-8, for a person to read
    Command command;

    bool operator==(const Deletion&) const = default;
};

// The deletion of a row, by its type key; nothing for ".." and links.
std::optional<Deletion> deletion(const BrowserEntry& entry);

// The deletion of several entries, all of which can be deleted; names: of them, as a question shows them.
struct Deletions {
    std::string question;
    std::vector<Command> commands;
};
Deletions deletions(const std::vector<const BrowserEntry*>& entries, std::string_view names);

// Makes a directory; nothing for an empty name.
std::vector<Command> makeDirectoryCommands(std::string_view name);

// Renames; nothing when the names are the same. RNFR and RNTO are only worth sending together, so where one
// of them has a line break or NUL in it the result is that one alone, for the sender to refuse by name.
std::vector<Command> renameCommands(std::string_view oldName, std::string_view newName);

// The directory that a double click leads to from the current one: a row's name and access as listed, all
// in the server's bytes. A link leads to its target as listed, which may be relative; the server's answer
// to the PWD that follows corrects that. Nothing for a file, for ".", for ".." at the root and for a link
// whose target is listed as empty. Whether the result can be sent at all is for the sender to see.
std::optional<std::string> navigationTarget(std::string_view current, std::string_view name,
                                            std::string_view access);

// name in directory: with one "/" between them.
std::string pathIn(std::string_view directory, std::string_view name);

// The directory above directory: without its last piece, "/" when nothing is left. And the name of that
// piece; empty where directory has none.
std::string parentDirectory(std::string_view directory);
std::string_view nameInParent(std::string_view directory);

// What stands between the name of a link, as listed, and its target.
inline constexpr std::string_view linkArrow = " -> ";

// What a reply to a command of the browser chain (CWD, then STAT -a, then PWD) is.
enum class BrowserReply : std::uint8_t {
    cwdSucceeded,     // ask for the listing
    directory,        // the first line names the current directory; the chain is over
    directoryUnknown, // an answer to PWD that names none; the chain is over, nothing changes
    listing           // everything else, a failed CWD included: show it and ask for the directory
};

// Recognises a reply. lastCommand: the command that it answers; first: its first line; last: its last one
// that is not empty; code: the reply's code. The wordings known beforehand come first; then a 250 to a CWD
// (RFC 959, section 5.4) and a 257 with a quoted path to a PWD.
BrowserReply recogniseBrowserReply(std::string_view lastCommand, std::string_view first,
                                   std::string_view last, int code);

// Whether the lines of a reply can be a listing: those of the refusal of a CWD quote a path that could look
// like an entry.
bool mayList(std::string_view lastCommand, int code);

// The directory in a line of a reply to PWD: what stands between its first and its second double quote, or
// the whole line if it lacks two. A doubled quote within stands for one (RFC 959, appendix II). Without the
// "/" at its end, unless it is nothing else.
std::string directoryOf(std::string_view line);

} // namespace corvel

#pragma once

#include "browser/Listing.h"
#include "common/Command.h"
#include "common/TextEncoding.h"

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

// The buttons. The one captioned "mkdir" lists again and keeps the connection alive; directories are made
// with the Insert key.
std::vector<Command> refreshCommands();
std::vector<Command> mkdirButtonCommands();

// The next links of the chain: the list of the directory just entered, and its name.
Command listCommand();
Command printDirectoryCommand();

// A deletion that a person has to confirm first.
struct Deletion {
    std::string question; // UTF-8, for a person to read
    Command command;

    bool operator==(const Deletion&) const = default;
};

// The deletion of a row, by its type key; nothing for ".." and links. encoding: how the name is read.
std::optional<Deletion> deletion(const BrowserEntry& entry, TextEncoding encoding);

// Makes a directory; nothing for an empty name.
std::vector<Command> makeDirectoryCommands(std::string_view name);

// Renames; nothing when the names are the same. RNFR and RNTO are only worth sending together, so where one
// of them has a line break or NUL in it the result is that one alone, for the sender to refuse by name.
std::vector<Command> renameCommands(std::string_view oldName, std::string_view newName);

} // namespace corvel

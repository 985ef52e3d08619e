#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace corvel {

// What a reply to a command of the browser chain (CWD, then STAT -a, then PWD) is.
enum class BrowserReply : std::uint8_t {
    cwdSucceeded,     // ask for the listing
    directory,        // the first line names the current directory; the chain is over
    directoryUnknown, // an answer to PWD that names none; the chain is over, nothing changes
    listing           // everything else, a failed CWD included: show it and ask for the directory
};

// Recognises a reply. lastCommand: the command that it answers; lines: the whole reply, split at CR LF, its
// last element the empty text behind the last CR LF; code: the reply's code. The wordings known beforehand
// come first; then a 250 to a CWD (RFC 959, section 5.4) and a 257 with a quoted path to a PWD.
BrowserReply recogniseBrowserReply(std::string_view lastCommand, std::span<const std::string_view> lines,
                                   int code);

// The lines to parse as a listing: all of them, but none of the refusal of a CWD, whose text quotes a path
// that could look like an entry.
std::span<const std::string_view> listingLines(std::string_view lastCommand,
                                               std::span<const std::string_view> lines, int code);

// The directory in a line of a reply to PWD: what stands between its first and its second double quote, or
// the whole line if it lacks two. A doubled quote within stands for one (RFC 959, appendix II). Without the
// "/" at its end, unless it is nothing else.
std::string directoryOf(std::string_view line);

} // namespace corvel

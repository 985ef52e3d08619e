#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// One line "key = value" of a configuration file.
struct EntryLine {
    std::string key;   // lower-case, without blanks around it
    std::string value; // without blanks around it; keeps its case and any further "="

    bool operator==(const EntryLine&) const = default;
};

// Whether a line whose first non-blank character is ";" or "#" is a comment. Only settings.ini has comments.
enum class Comments { none, semicolonAndHash };

// The entry on a line (without its line end, in the bytes of the file); nothing for a line without "=" and
// for a comment. A byte order mark in front of the line, as some editors put it at the start of a file, is
// passed over.
std::optional<EntryLine> parseEntryLine(std::string_view line, Comments comments);

} // namespace corvel

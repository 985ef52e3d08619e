#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// One "key = value" line of a configuration file.
struct EntryLine {
    std::string key;   // lower-case, trimmed
    std::string value; // trimmed; keeps its case and any further "="

    bool operator==(const EntryLine&) const = default;
};

// Whether lines whose first non-blank character is ";" or "#" are comments.
enum class Comments { none, semicolonAndHash };

// The entry on a line; nothing for a line without "=" and for a comment.
std::optional<EntryLine> parseEntryLine(std::string_view line, Comments comments);

} // namespace corvel

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// The lines that were left out of a reply because a field could not be read.
struct BadLines {
    std::size_t count = 0;
    std::size_t firstLine = 0;           // of the reply, from 1
    std::string firstText = {};          // the offending field of that line
    std::string_view firstExpected = {}; // what it should have been, such as "16-bit number"; a literal

    void note(std::size_t lineNumber, std::string_view text, std::string_view expected);

    bool operator==(const BadLines&) const = default;
};

// One console line that names the first bad line and counts the others; nothing where no line was bad.
std::optional<std::string> badLinesMessage(const BadLines& bad);

} // namespace corvel

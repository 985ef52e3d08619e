#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace corvel {

// The bound that readers of replies are measured against: one memchr pass that visits every line end of text.
// Gives their number.
inline std::size_t countLines(std::string_view text) {
    std::size_t lines = 0;
    while (const void* end = std::memchr(text.data(), '\n', text.size())) {
        text.remove_prefix(static_cast<std::size_t>(static_cast<const char*>(end) - text.data()) + 1);
        ++lines;
    }
    return lines;
}

} // namespace corvel

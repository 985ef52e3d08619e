#include "common/Pattern.h"

#include "common/Numbers.h"
#include "common/TextEncoding.h"

#include <cstddef>

namespace corvel {

namespace {

// How many bytes at the front of text the symbol stands for; 0 where it does not match. A character beyond
// ASCII is its first byte with the continuation bytes behind it.
std::size_t matchedBytes(char symbol, std::string_view text) {
    switch (symbol) {
    case '?': {
        std::size_t size = 1;
        while (static_cast<unsigned char>(text[0]) >= 0xC0 && size < text.size() &&
               continuesCharacter(text[size])) {
            ++size;
        }
        return size;
    }
    case '#':
        return isDigit(text[0]) ? 1 : 0;
    default:
        return symbol == text[0] ? 1 : 0;
    }
}

} // namespace

bool matchesPattern(std::string_view text, std::string_view pattern) {
    std::size_t position = 0;
    std::size_t symbol = 0;
    // Where to go on after a mismatch: the last star seen, and how far it has swallowed the text.
    std::size_t star = std::string_view::npos;
    std::size_t swallowed = 0;
    while (position < text.size()) {
        if (symbol < pattern.size() && pattern[symbol] == '*') {
            star = symbol++;
            swallowed = position;
        } else if (const std::size_t matched =
                       symbol < pattern.size() ? matchedBytes(pattern[symbol], text.substr(position)) : 0;
                   matched > 0) {
            ++symbol;
            position += matched;
        } else if (star != std::string_view::npos) {
            symbol = star + 1;
            position = ++swallowed;
        } else {
            return false;
        }
    }
    while (symbol < pattern.size() && pattern[symbol] == '*') {
        ++symbol;
    }
    return symbol == pattern.size();
}

} // namespace corvel

#include "common/Pattern.h"

#include <cstddef>

namespace corvel {

namespace {

bool matchesOne(char symbol, char character) {
    switch (symbol) {
    case '?':
        return true;
    case '#':
        return character >= '0' && character <= '9';
    default:
        return symbol == character;
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
        } else if (symbol < pattern.size() && matchesOne(pattern[symbol], text[position])) {
            ++symbol;
            ++position;
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

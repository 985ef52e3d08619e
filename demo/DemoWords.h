#pragma once

#include "common/Text.h"

#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

inline std::string concat(std::initializer_list<std::string_view> pieces) {
    return join(std::vector(pieces), "");
}

// Thrown where a command is not carried out: what the server replies.
struct Refusal {
    int code;
    std::string text;
};

// Throws the refusal of a change, its reason a sentence in pieces.
[[noreturn]] inline void refuse(std::initializer_list<std::string_view> reason) {
    throw Refusal{550, concat(reason)};
}

// A text's first word and what follows it and one blank.
struct FirstWord {
    std::string_view word;
    std::string_view rest;
};

inline FirstWord cutWord(std::string_view text) {
    const std::vector<std::string_view> pieces = split(text, " ", 2);
    return {pieces.front(), pieces.size() > 1 ? pieces.back() : std::string_view()};
}

// The words of a text, however many blanks are between, before and behind them.
inline std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> pieces = split(text, " ");
    std::erase(pieces, std::string_view());
    return pieces;
}

// The number that the whole of text is, or nothing when it is none or lies outside least to most.
inline std::optional<std::int64_t> numberWithin(std::string_view text, std::int64_t least, std::int64_t most,
                                                int base = 10) {
    std::int64_t number = 0;
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, number, base);
    const bool isWithin = error == std::errc() && end == textEnd && number >= least && number <= most;
    return isWithin ? std::optional(number) : std::nullopt;
}

} // namespace corvel

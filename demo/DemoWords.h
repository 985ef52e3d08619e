#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// A text's first word and what follows it and one blank.
struct FirstWord {
    std::string_view word;
    std::string_view rest;
};

FirstWord cutWord(std::string_view text);

// The words of a text, however many blanks are between, before and behind them.
std::vector<std::string_view> words(std::string_view text);

// The number that the whole of text is, or nothing when it is none or lies outside least to most.
std::optional<std::int64_t> numberWithin(std::string_view text, std::int64_t least, std::int64_t most);

std::string concat(std::initializer_list<std::string_view> pieces);

} // namespace corvel

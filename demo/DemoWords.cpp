#include "demo/DemoWords.h"

#include "common/Text.h"

#include <charconv>

namespace corvel {

FirstWord cutWord(std::string_view text) {
    const std::size_t blank = text.find(' ');
    if (blank == std::string_view::npos) {
        return {.word = text, .rest = {}};
    }
    return {.word = text.substr(0, blank), .rest = text.substr(blank + 1)};
}

std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> pieces = split(text, " ");
    std::erase(pieces, std::string_view());
    return pieces;
}

std::optional<std::int64_t> numberWithin(std::string_view text, std::int64_t least, std::int64_t most) {
    std::int64_t number = 0;
    const char* textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, number);
    if (error != std::errc() || end != textEnd || number < least || number > most) {
        return std::nullopt;
    }
    return number;
}

std::string concat(std::initializer_list<std::string_view> pieces) {
    return join(std::vector(pieces), "");
}

} // namespace corvel

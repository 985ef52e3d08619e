#include "common/Errors.h"

namespace corvel {

namespace {

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 80;
    std::string result = "\"";
    result += text.substr(0, longest);
    result += text.size() > longest ? "...\"" : "\"";
    return result;
}

} // namespace

std::string describe(const ParseError& error) {
    const std::string place =
        error.lineNumber() == 0 ? "" : "reply line " + std::to_string(error.lineNumber()) + ": ";
    return place + error.what();
}

ConversionError::ConversionError(std::string_view text, std::string_view expected)
    : ParseError(quoted(text) + " is no " + std::string(expected)) {}

IndexOutOfRange::IndexOutOfRange(std::string_view text, std::string_view missing)
    : ParseError(quoted(text) + " has no " + std::string(missing)) {}

InvalidArgument::InvalidArgument(std::string_view text, std::string_view problem)
    : ParseError(quoted(text) + " " + std::string(problem)) {}

} // namespace corvel

#include "common/Errors.h"

#include "common/TextEncoding.h"

namespace corvel {

namespace {

std::string excerpt(std::string_view text) {
    constexpr std::size_t longest = 80;
    std::string result = "\"";
    result += beginningOf(text, longest);
    result += text.size() > longest ? "...\"" : "\"";
    return result;
}

std::string tooManyText(std::size_t count) {
    return "too many records for a list, the last " + std::to_string(count) + " are left out";
}

} // namespace

std::string describe(const ParseError& error) {
    const std::string place =
        error.lineNumber() == 0 ? "" : "reply line " + std::to_string(error.lineNumber()) + ": ";
    return place + error.what();
}

ParseError::ParseError(std::string_view text, std::string_view problem)
    : std::runtime_error(excerpt(text) + " " + std::string(problem)) {}

void BadLines::note(std::size_t lineNumber, std::string_view text, std::string_view expected) {
    if (count++ == 0) {
        firstLine = lineNumber;
        firstText = text;
        firstExpected = expected;
    }
}

std::optional<std::string> badLinesMessage(const BadLines& bad) {
    if (bad.count == 0) {
        return bad.tooMany == 0 ? std::nullopt : std::optional(tooManyText(bad.tooMany));
    }
    ConversionError error(bad.firstText, bad.firstExpected);
    error.setLineNumber(bad.firstLine);
    const std::size_t others = bad.count - 1;
    std::string message = describe(error) + ", the line is left out";
    if (others > 0) {
        message += ", and so " + std::string(others == 1 ? "is " : "are ") + std::to_string(others) + " more";
    }
    return bad.tooMany == 0 ? message : message + "; " + tooManyText(bad.tooMany);
}

} // namespace corvel

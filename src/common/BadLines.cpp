#include "common/BadLines.h"

#include "common/Errors.h"

namespace corvel {

void BadLines::note(std::size_t lineNumber, std::string_view text, std::string_view expected) {
    if (count++ == 0) {
        firstLine = lineNumber;
        firstText = text;
        firstExpected = expected;
    }
}

std::optional<std::string> badLinesMessage(const BadLines& bad) {
    if (bad.count == 0) {
        return std::nullopt;
    }
    ConversionError error(bad.firstText, bad.firstExpected);
    error.setLineNumber(bad.firstLine);
    const std::size_t others = bad.count - 1;
    std::string message = describe(error) + ", the line is left out";
    if (others > 0) {
        message += ", and so " + std::string(others == 1 ? "is " : "are ") + std::to_string(others) + " more";
    }
    return message;
}

} // namespace corvel

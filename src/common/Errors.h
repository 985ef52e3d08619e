#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvel {

// What a parser throws when a text from a server or a file cannot be read. what() is one line for a
// person, with the offending text in it. Caught in one place, where a reply is dispatched.
class ParseError : public std::runtime_error {
  public:
    // text: the offending text, as it came; problem: what is wrong with it, such as "is too short".
    ParseError(std::string_view text, std::string_view problem);

    // The line of the reply that could not be read, from 1; 0 where the parser did not say.
    std::size_t lineNumber() const { return lineNumber_; }

    // Set by the loop that knows the line; the conversion that threw sees its own text alone.
    void setLineNumber(std::size_t lineNumber) { lineNumber_ = lineNumber; }

  private:
    std::size_t lineNumber_ = 0;
};

// error as one console line: its text, behind "reply line N: " where it knows the line.
std::string describe(const ParseError& error);

// A text that is no number, or a number outside the range of its field.
class ConversionError : public ParseError {
  public:
    // expected: what was wanted, such as "16-bit number".
    ConversionError(std::string_view text, std::string_view expected)
        : ParseError(text, std::string("is no ").append(expected)) {}
};

// The lines that were left out of a reply because a field could not be read.
struct BadLines {
    std::size_t count = 0;
    std::size_t firstLine = 0;           // of the reply, from 1
    std::string firstText = {};          // the offending field of that line
    std::string_view firstExpected = {}; // what it should have been, such as "16-bit number"; a literal
    std::size_t tooMany = 0;             // records beyond the most that a list takes, left out too

    void note(std::size_t lineNumber, std::string_view text, std::string_view expected);

    bool operator==(const BadLines&) const = default;
};

// One console line that names the first bad line and counts the others; nothing where no line was left out.
std::optional<std::string> badLinesMessage(const BadLines& bad);

} // namespace corvel

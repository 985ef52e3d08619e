#include "common/Numbers.h"

#include "common/Errors.h"
#include "common/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace corvel {

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// The part of text that spells a number, without its plus sign; empty when there is none.
std::string_view numberPart(std::string_view text) {
    text = trimLeading(text);
    const bool isSigned = !text.empty() && (text.front() == '-' || text.front() == '+');
    std::size_t end = isSigned ? 1 : 0;
    std::size_t digits = 0;
    const auto skipDigits = [&] {
        for (; end < text.size() && isDigit(text[end]); ++end) {
            ++digits;
        }
    };
    skipDigits();
    if (end < text.size() && text[end] == '.') {
        ++end;
        skipDigits();
    }
    if (digits == 0) {
        return {};
    }
    const std::size_t start = text.front() == '+' ? 1 : 0;
    return text.substr(start, end - start);
}

template <typename Integer>
Integer toInteger(std::string_view text, std::string_view expected) {
    const double number = roundHalfToEven(leadingNumber(text));
    if (number < std::numeric_limits<Integer>::min() || number > std::numeric_limits<Integer>::max()) {
        throw ConversionError(text, expected);
    }
    return static_cast<Integer>(number);
}

} // namespace

double leadingNumber(std::string_view text) {
    const std::string_view part = numberPart(text);
    double number = 0;
    const auto result =
        std::from_chars(part.data(), part.data() + part.size(), number, std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range) {
        return part.front() == '-' ? -std::numeric_limits<double>::infinity()
                                   : std::numeric_limits<double>::infinity();
    }
    return number;
}

bool hasLeadingNumber(std::string_view text) {
    return !numberPart(text).empty();
}

double roundHalfToEven(double number) {
    const double lower = std::floor(number);
    const double rest = number - lower;
    if (rest == 0.5) {
        return std::fmod(lower, 2.0) == 0.0 ? lower : lower + 1;
    }
    return rest < 0.5 ? lower : lower + 1;
}

std::int16_t toInt16(std::string_view text) {
    return toInteger<std::int16_t>(text, "16-bit number");
}

std::int32_t toInt32(std::string_view text) {
    return toInteger<std::int32_t>(text, "32-bit number");
}

bool toSwitch(std::string_view text) {
    return leadingNumber(text) != 0;
}

bool toBoolean(std::string_view text) {
    const std::string word = toLower(trim(text));
    if (word == "true" || word == "false") {
        return word == "true";
    }
    const std::string_view number = numberPart(word);
    if (number.empty() || number.size() + (word.front() == '+' ? 1 : 0) != word.size()) {
        throw ConversionError(text, "switch");
    }
    return leadingNumber(word) != 0;
}

std::string wholeNumberText(double number) {
    std::array<char, 330> buffer{};
    const double whole = roundHalfToEven(number) + 0.0; // the sum turns -0 into 0
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), whole, std::chars_format::fixed, 0);
    return {buffer.data(), result.ptr};
}

std::string groupThousands(std::string_view digits, std::string_view separator) {
    if (digits.empty() || !std::ranges::all_of(digits, isDigit)) {
        return std::string(digits);
    }
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
    std::string result;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) {
            result += separator;
        }
        result += digits[i];
    }
    return result;
}

} // namespace corvel

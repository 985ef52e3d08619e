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
std::optional<Integer> tryInteger(std::string_view text) {
    Integer plain = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), plain);
    if (result.ec == std::errc() && result.ptr == text.data() + text.size()) {
        return plain;
    }
    const double number = roundHalfToEven(leadingNumber(text));
    if (number < std::numeric_limits<Integer>::min() || number > std::numeric_limits<Integer>::max()) {
        return std::nullopt;
    }
    return static_cast<Integer>(number);
}

// digits, a decimal number of any length, becomes digits * factor + summand.
void multiplyAdd(std::string& digits, std::uint32_t factor, std::uint32_t summand) {
    std::uint64_t carry = summand;
    for (std::size_t place = digits.size(); place-- > 0;) {
        carry += static_cast<std::uint64_t>(digits[place] - '0') * factor;
        digits[place] = static_cast<char>('0' + carry % 10);
        carry /= 10;
    }
    if (carry != 0) {
        digits.insert(0, std::to_string(carry));
    }
}

// Whether a number that ends in whole's digits and goes on with fraction's is rounded up, halves to even.
bool roundsUp(std::string_view whole, std::string_view fraction) {
    if (fraction.empty() || fraction.front() != '5') {
        return !fraction.empty() && fraction.front() > '5';
    }
    const bool isHalf = fraction.find_first_not_of('0', 1) == std::string_view::npos;
    return !isHalf || (!whole.empty() && (whole.back() - '0') % 2 == 1);
}

} // namespace

double leadingNumber(std::string_view text) {
    const std::string_view part = numberPart(text);
    double number = 0;
    const auto result =
        std::from_chars(part.data(), part.data() + part.size(), number, std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range) {
        if (part.substr(0, part.find('.')).find_first_of("123456789") == std::string_view::npos) {
            return 0; // too small for a double rather than too large
        }
        return part.front() == '-' ? -std::numeric_limits<double>::infinity()
                                   : std::numeric_limits<double>::infinity();
    }
    return number;
}

bool hasLeadingNumber(std::string_view text) {
    return !numberPart(text).empty();
}

bool isNumber(std::string_view text) {
    const std::string_view number = numberPart(text);
    const std::string_view whole = trim(text);
    return !number.empty() && number.size() + (whole.front() == '+' ? 1 : 0) == whole.size();
}

double toNumber(std::string_view text) {
    if (!isNumber(text)) {
        throw ConversionError(text, "number");
    }
    return leadingNumber(text);
}

double roundHalfToEven(double number) {
    const double lower = std::floor(number);
    const double rest = number - lower;
    if (rest == 0.5) {
        return std::fmod(lower, 2.0) == 0.0 ? lower : lower + 1;
    }
    return rest < 0.5 ? lower : lower + 1;
}

std::optional<std::int16_t> tryInt16(std::string_view text) {
    return tryInteger<std::int16_t>(text);
}

std::int16_t toInt16(std::string_view text) {
    const std::optional<std::int16_t> number = tryInt16(text);
    if (!number) {
        throw ConversionError(text, "16-bit number");
    }
    return *number;
}

std::optional<std::int32_t> tryInt32(std::string_view text) {
    return tryInteger<std::int32_t>(text);
}

std::int32_t toInt32(std::string_view text) {
    const std::optional<std::int32_t> number = tryInt32(text);
    if (!number) {
        throw ConversionError(text, "32-bit number");
    }
    return *number;
}

std::int64_t toCurrency(std::string_view text) {
    const std::string digits = wholeNumberText(text, 10000);
    std::int64_t amount = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), amount);
    if (!isNumber(text) || result.ec != std::errc()) {
        throw ConversionError(text, "amount");
    }
    return amount;
}

bool toSwitch(std::string_view text) {
    return leadingNumber(text) != 0;
}

bool toBoolean(std::string_view text) {
    const std::string word = toLower(trim(text));
    if (word == "true" || word == "false") {
        return word == "true";
    }
    if (!isNumber(word)) {
        throw ConversionError(text, "switch");
    }
    return leadingNumber(word) != 0;
}

std::string numberText(double number, int decimals) {
    std::array<char, 330> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                      std::chars_format::fixed, decimals);
    std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
    if (decimals > 0) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        text = text.substr(0, text.find_last_not_of('.') + 1);
    }
    return text == "-0" ? "0" : std::string(text);
}

std::string wholeNumberText(double number) {
    return numberText(number, 0);
}

std::string wholeNumberText(std::string_view text, std::uint32_t factor) {
    std::string_view number = numberPart(text);
    const bool isNegative = number.starts_with('-');
    number.remove_prefix(isNegative ? 1 : 0);
    const std::size_t point = std::min(number.find('.'), number.size());
    std::string digits(number.substr(0, point));
    digits += number.substr(std::min(point + 1, number.size()));
    const std::size_t decimals = digits.size() - point;
    multiplyAdd(digits, factor, 0);

    std::string whole = digits.substr(0, digits.size() - decimals);
    if (roundsUp(whole, std::string_view(digits).substr(whole.size()))) {
        multiplyAdd(whole, 1, 1);
    }
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    if (whole.empty()) {
        return "0";
    }
    return isNegative ? "-" + whole : whole;
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

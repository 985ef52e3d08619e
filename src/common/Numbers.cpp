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

// A product without its sign.
struct Product {
    bool isNegative;
    std::uint64_t value;
};

// The number that part spells times factor, exact but for being rounded, halves to even; nothing where 64
// bits do not hold what comes up on the way.
std::optional<Product> product(std::string_view part, std::uint64_t factor) {
    constexpr std::size_t mostDigits = std::numeric_limits<std::uint64_t>::digits10;
    const bool isNegative = part.starts_with('-');
    part.remove_prefix(std::min(part.find_first_not_of("-0"), part.size()));
    const std::size_t point = std::min(part.find('.'), part.size());
    const std::string_view fraction = part.substr(std::min(point + 1, part.size()));
    const std::string_view kept = fraction.substr(0, mostDigits - std::min(point, mostDigits));
    std::string_view rounded = fraction.substr(kept.size()); // away
    const std::string digits = "0" + std::string(part.substr(0, point)) + std::string(kept);
    std::uint64_t value = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc()) {
        return std::nullopt;
    }
    std::uint64_t divisor = 1;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        (factor % 10 == 0 ? factor /= 10 : divisor *= 10);
    }
    if (value >= std::numeric_limits<std::uint64_t>::max() / factor) { // there is room to round up
        return std::nullopt;
    }
    std::uint64_t rest = value * factor % divisor;
    value = value * factor / divisor;
    if (divisor == 1 && factor == 1 && !rounded.empty()) { // then its first digit decides
        rest = static_cast<std::uint64_t>(rounded.front() - '0');
        divisor = 10;
        rounded.remove_prefix(1);
    }
    const bool isMore = rounded.find_first_not_of('0') != std::string_view::npos;
    const bool isHalf = rest == divisor - rest;
    return Product{isNegative,
                   value + (rest > divisor - rest || (isHalf && (isMore || value % 2 == 1)) ? 1U : 0U)};
}

template <typename Integer>
std::optional<Integer> tryInteger(std::string_view text) {
    Integer plain = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), plain);
    if (result.ec == std::errc() && result.ptr == text.data() + text.size()) {
        return plain;
    }
    const double number = std::nearbyint(leadingNumber(text));
    if (number < std::numeric_limits<Integer>::min() || number > std::numeric_limits<Integer>::max()) {
        return std::nullopt;
    }
    return static_cast<Integer>(number);
}

template <typename Integer>
Integer orThrow(std::optional<Integer> number, std::string_view text, std::string_view expected) {
    return number ? *number : throw ConversionError(text, expected);
}

} // namespace

double leadingNumber(std::string_view text) {
    const std::string_view part = numberPart(text);
    double number = 0;
    const auto result =
        std::from_chars(part.data(), part.data() + part.size(), number, std::chars_format::fixed);
    const std::string_view whole = part.substr(0, part.find('.'));
    if (result.ec == std::errc::result_out_of_range && whole.find_first_of("123456789") != whole.npos) {
        number = std::numeric_limits<double>::infinity(); // too large rather than too small
        return whole.front() == '-' ? -number : number;
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

std::optional<std::int16_t> tryInt16(std::string_view text) {
    return tryInteger<std::int16_t>(text);
}

std::int16_t toInt16(std::string_view text) {
    return orThrow(tryInt16(text), text, "16-bit number");
}

std::optional<std::int32_t> tryInt32(std::string_view text) {
    return tryInteger<std::int32_t>(text);
}

std::int32_t toInt32(std::string_view text) {
    return orThrow(tryInt32(text), text, "32-bit number");
}

std::int64_t toCurrency(std::string_view text) {
    const std::optional<Product> amount = isNumber(text) ? product(numberPart(text), 10000) : std::nullopt;
    const auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (!amount || amount->value > most + (amount->isNegative ? 1 : 0)) {
        throw ConversionError(text, "amount");
    }
    return static_cast<std::int64_t>(amount->isNegative ? 0 - amount->value : amount->value);
}

bool toBoolean(std::string_view text) {
    const std::string word = toLower(trim(text));
    if (word == "true" || word == "false") {
        return word == "true";
    }
    return isNumber(word) ? leadingNumber(word) != 0 : throw ConversionError(text, "switch");
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

std::string wholeNumberText(std::string_view text, std::uint32_t factor) {
    constexpr double longest = std::numeric_limits<double>::max();
    if (const std::optional<Product> exact = product(numberPart(text), factor)) {
        return (exact->isNegative && exact->value != 0 ? "-" : "") + std::to_string(exact->value);
    }
    return numberText(std::clamp(leadingNumber(text) * factor, -longest, longest), 0);
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

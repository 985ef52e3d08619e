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

long double exactNumber(std::string_view text) {
    const std::string_view part = numberPart(text);
    long double number = 0;
    const auto result =
        std::from_chars(part.data(), part.data() + part.size(), number, std::chars_format::fixed);
    const std::string_view whole = part.substr(0, part.find('.'));
    if (result.ec == std::errc::result_out_of_range && whole.find_first_of("123456789") != whole.npos) {
        number = std::numeric_limits<long double>::infinity(); // too large rather than too small
        return whole.front() == '-' ? -number : number;
    }
    return number;
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

// number as numberText writes it.
template <typename Number>
std::string decimalText(Number number, int decimals) {
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

} // namespace

double leadingNumber(std::string_view text) {
    return static_cast<double>(exactNumber(text));
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
    constexpr long double limit = 9223372036854775808.0L; // 2 to the power of 63
    const long double amount = std::nearbyint(exactNumber(text) * 10000);
    if (!isNumber(text) || amount < -limit || amount >= limit) {
        throw ConversionError(text, "amount");
    }
    return static_cast<std::int64_t>(amount);
}

bool toBoolean(std::string_view text) {
    const std::string word = toLower(trim(text));
    if (word == "true" || word == "false") {
        return word == "true";
    }
    return isNumber(word) ? leadingNumber(word) != 0 : throw ConversionError(text, "switch");
}

std::string numberText(double number, int decimals) {
    return decimalText(number, decimals);
}

std::string wholeNumberText(std::string_view text, std::uint32_t factor) {
    constexpr long double longest = std::numeric_limits<double>::max();
    return decimalText(std::clamp(exactNumber(text) * factor, -longest, longest), 0);
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

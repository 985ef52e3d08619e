// Numbers as servers and people write them: a text in each line.
#include "common/Numbers.h"

#include "common/Errors.h"
#include "common/Text.h"
#include "Fuzz.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace corvel::fuzz {

namespace {

// What a text that isNumber spells, times ten to the power of places, rounded halves to even: digit by digit,
// as one learns it at school.
std::string scaled(std::string_view text, std::size_t places) {
    text = trim(text);
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string fraction(text.substr(std::min(point + 1, text.size())));
    fraction.resize(std::max(fraction.size(), places), '0');
    std::string digits = "0" + std::string(text.substr(0, point)) + fraction.substr(0, places);
    const std::string rest = fraction.substr(places) + "0";
    const bool isMore = rest > "5" && rest.find_first_not_of('0', 1) != std::string::npos;
    const bool isOdd = (digits.back() - '0') % 2 == 1;
    if (rest.front() > '5' || (rest.front() == '5' && (isMore || isOdd))) {
        std::size_t place = digits.size() - 1;
        for (; digits[place] == '9'; --place) {
            digits[place] = '0';
        }
        ++digits[place];
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    return (isNegative && digits != "0" ? "-" : "") + digits;
}

// The result of read, or nothing where it says that the text is none of its kind.
template <typename Read>
auto tried(Read read, std::string_view text) -> std::optional<decltype(read(text))> {
    try {
        return read(text);
    } catch (const ConversionError&) {
        return std::nullopt;
    }
}

std::size_t digitsOf(const std::string& number) {
    return static_cast<std::size_t>(std::ranges::count_if(number, isDigit));
}

bool fitsInto64Bits(const std::string& number) {
    const bool isNegative = number.starts_with('-');
    const std::string limit = isNegative ? "-9223372036854775808" : "9223372036854775807";
    return number.size() < limit.size() || (number.size() == limit.size() && number <= limit);
}

void checkIntegers(std::string_view text) {
    const double number = leadingNumber(text);
    const std::optional<std::int32_t> wide = tryInt32(text);
    const std::optional<std::int16_t> narrow = tryInt16(text);
    require(!narrow || wide == *narrow, "what fits into 16 bits is the same number in 32");
    require(!wide || std::abs(*wide - number) <= 0.5, "an integer is the nearest one");
    require(wide || std::abs(number) > 2147483647.0, "only what is too large is no 32-bit number");
    require(tried(toInt16, text) == narrow && tried(toInt32, text) == wide,
            "throwing and trying give the same");
    require(hasLeadingNumber(text) || number == 0, "where there is no number there is 0");
}

void checkDecimals(std::string_view text) {
    const std::optional<std::int64_t> amount = tried(toCurrency, text);
    const std::string whole = wholeNumberText(text);
    require(digitsOf(whole) <= 309, "a whole number has no more digits than a double");
    if (!isNumber(text)) {
        require(!amount, "what is no number is no amount");
        return;
    }
    const std::string exact = scaled(text, 4);
    require(amount ? std::to_string(*amount) == exact : !fitsInto64Bits(exact), "an amount is exact");
    if (const std::string integer = scaled(text, 0); digitsOf(integer) < 19) {
        require(whole == integer, "a whole number is exact");
    }
    require(tried(toBoolean, text) == (leadingNumber(text) != 0), "a number is a switch");
}

void checkTexts(std::string_view text) {
    const std::string grouped = groupThousands(text, ".");
    const bool isAllDigits = !text.empty() && std::ranges::all_of(text, isDigit);
    std::string_view significant = text;
    if (isAllDigits) {
        significant.remove_prefix(std::min(text.find_first_not_of('0'), text.size() - 1));
    }
    require((isAllDigits ? replaceAll(grouped, ".", "") : grouped) == significant,
            "grouping changes no digit");
    const double number = leadingNumber(text);
    if (std::abs(number) < 1e6) {
        require(std::abs(leadingNumber(numberText(number, 9)) - number) < 1e-8,
                "a number can be read that was written");
    }
}

// However long what cannot be read is, what is told of it is short.
void checkMessage(std::string_view text) {
    constexpr std::size_t longest = 512;
    BadLines bad;
    bad.tooMany = text.size();
    require(badLinesMessage(bad).has_value() == !text.empty(), "what is left out is told");
    bad.note(1, text, "number");
    require(badLinesMessage(bad)->size() <= longest, "a message stays short");
}

} // namespace

void check(std::string_view bytes) {
    for (const std::string_view text : split(bytes, "\n")) {
        checkIntegers(text);
        checkDecimals(text);
        checkTexts(text);
        checkMessage(text);
    }
}

void work(std::string_view bytes) {
    tryInt32(bytes);
    tried(toCurrency, bytes);
    tried(toBoolean, bytes);
    wholeNumberText(bytes, 1024);
    groupThousands(bytes, ",");
}

} // namespace corvel::fuzz

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// The lenient rule for numbers: the decimal number at the start of text, with an optional sign and
// fraction, leading blanks allowed; whatever follows it is ignored. A text with no number at its start
// gives 0. "21abc" is 21, "-9.7" is -9.7, "abc" and "" are 0.
double leadingNumber(std::string_view text);

// Whether text begins (after blanks) with a decimal number, that is, whether leadingNumber reads one.
bool hasLeadingNumber(std::string_view text);

// Whether the whole of text, blanks around it aside, is one decimal number.
bool isNumber(std::string_view text);

// The number that text spells, the whole of it as isNumber asks. Throws ConversionError for any other text.
double toNumber(std::string_view text);

// The lenient number at the start of text, rounded halves to even.
// Throws ConversionError when it lies outside the 16-bit (32-bit) range.
std::int16_t toInt16(std::string_view text);
std::int32_t toInt32(std::string_view text);

// As toInt16 and toInt32, but give nothing instead of throwing: for tables in which a bad line is left out.
std::optional<std::int16_t> tryInt16(std::string_view text);
std::optional<std::int32_t> tryInt32(std::string_view text);

// An amount of money-like kind in 1/10000, read strictly: the whole of text (blanks around it aside) must be
// a decimal number. Decimals past the fourth are rounded halves to even. Throws ConversionError otherwise,
// and where the amount lies outside the 64-bit range.
std::int64_t toCurrency(std::string_view text);

// A text as the platform's text-to-boolean rule reads it: "True" and "False" in any case, or a number of
// which 0 is false and every other true. Throws ConversionError for anything else, the empty text included.
bool toBoolean(std::string_view text);

// number in plain decimal text, without grouping or exponent, rounded to decimals places at most, halves to
// even: no zeros stand at the end of a fraction, and none alone. number: finite; decimals: 0 to 9.
std::string numberText(double number, int decimals);

// The lenient number at the start of text, times factor, rounded halves to even, in plain decimal text: exact
// up to 19 digits, and no more than 309 of them. "0100" is "100", "1.5" times 1024 is "1536", "abc" is "0".
std::string wholeNumberText(std::string_view text, std::uint32_t factor = 1);

// digits (decimal digits alone) with leading zeros dropped and separator between the groups of three, as
// the pattern "###,###,###,##0" shows it. A text that is not all digits comes back as it is.
std::string groupThousands(std::string_view digits, std::string_view separator);

} // namespace corvel

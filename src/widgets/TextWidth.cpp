#include "widgets/TextWidth.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>

namespace corvel {

namespace {

constexpr char firstPrintable = ' ';
constexpr char lastPrintable = '~';
constexpr double fractions = 64;

constexpr std::uint64_t everyByte(std::uint8_t value) {
    return 0x0101010101010101ULL * value;
}

// The top bit of a byte of the result is set where the byte of word is below 0x20, is 0x7f or has its own top
// bit set. A carry out of such a byte may set bits of the bytes above it too: only "none" is exact.
std::uint64_t unprintable(std::uint64_t word) {
    const std::uint64_t below = word - everyByte(firstPrintable);
    const std::uint64_t above = word + everyByte(0x7f - lastPrintable);
    return (below | above | word) & everyByte(0x80);
}

} // namespace

bool isPrintableAscii(std::string_view bytes) {
    std::uint64_t word = 0;
    while (bytes.size() >= sizeof word) {
        std::memcpy(&word, bytes.data(), sizeof word);
        if (unprintable(word) != 0) {
            return false;
        }
        bytes.remove_prefix(sizeof word);
    }
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char byte) { return byte >= firstPrintable && byte <= lastPrintable; });
}

TextWidth::TextWidth(const QFont& font) : metrics_(font) {
    alphabets_.fill(unknown);
    Width widest = 0;
    for (char byte = firstPrintable; byte <= lastPrintable; ++byte) {
        const QChar character = QLatin1Char(byte);
        widest = std::max(widest, ofCharacter(QStringView(&character, 1)));
    }
    widestAscii_ = widest / fractions;
}

double TextWidth::ofAscii(std::string_view bytes) const {
    // Four sums side by side: one alone would wait for each addition before the next.
    std::array<Width, 4> sums = {};
    std::size_t at = 0;
    for (; at + sums.size() <= bytes.size(); at += sums.size()) {
        for (std::size_t lane = 0; lane < sums.size(); ++lane) {
            sums[lane] += alphabets_[static_cast<std::uint8_t>(bytes[at + lane])];
        }
    }
    for (; at < bytes.size(); ++at) {
        sums[0] += alphabets_[static_cast<std::uint8_t>(bytes[at])];
    }
    return std::accumulate(sums.begin(), sums.end(), 0.0) / fractions;
}

double TextWidth::of(QStringView text) {
    std::uint64_t sum = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at].unicode();
        if (unit < alphabetsEnd && alphabets_[unit] != unknown) {
            sum += alphabets_[unit];
            continue;
        }
        const bool isPair = text[at].isHighSurrogate() && at + 1 < text.size();
        sum += ofCharacter(text.sliced(at, isPair ? 2 : 1));
        at += isPair ? 1 : 0;
    }
    return static_cast<double>(sum) / fractions;
}

TextWidth::Width TextWidth::ofCharacter(QStringView character) {
    const char32_t code = character.size() == 2 ? QChar::surrogateToUcs4(character[0], character[1])
                                                : char32_t(character[0].unicode());
    if (const auto known = others_.constFind(code); known != others_.constEnd()) {
        return *known;
    }
    const auto width =
        static_cast<Width>(std::ceil(metrics_.horizontalAdvance(character.toString()) * fractions));
    if (code < alphabetsEnd) {
        return alphabets_[code] = width;
    }
    return *others_.insert(code, width);
}

} // namespace corvel

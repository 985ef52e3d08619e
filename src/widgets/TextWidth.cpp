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
    alphabets_.fill(-1);
    for (char byte = firstPrintable; byte <= lastPrintable; ++byte) {
        const double width = std::ceil(metrics_.horizontalAdvance(QLatin1Char(byte)) * fractions);
        ascii_[static_cast<std::uint8_t>(byte)] = static_cast<std::uint32_t>(width);
        widestAscii_ = std::max(widestAscii_, width / fractions);
    }
}

double TextWidth::ofAscii(std::string_view bytes) const {
    // Four sums side by side: one alone would wait for each addition before the next.
    std::array<std::uint32_t, 4> sums = {};
    std::size_t at = 0;
    for (; at + sums.size() <= bytes.size(); at += sums.size()) {
        for (std::size_t lane = 0; lane < sums.size(); ++lane) {
            sums[lane] += ascii_[static_cast<std::uint8_t>(bytes[at + lane]) % ascii_.size()];
        }
    }
    for (; at < bytes.size(); ++at) {
        sums[0] += ascii_[static_cast<std::uint8_t>(bytes[at]) % ascii_.size()];
    }
    return std::accumulate(sums.begin(), sums.end(), 0.0) / fractions;
}

double TextWidth::of(const QString& text) {
    double sum = 0;
    for (qsizetype at = 0; at < text.size();) {
        const bool isPair = text.at(at).isHighSurrogate() && at + 1 < text.size();
        const qsizetype length = isPair ? 2 : 1;
        sum += ofCharacter(QStringView(text).sliced(at, length));
        at += length;
    }
    return sum;
}

double TextWidth::ofCharacter(QStringView character) {
    const char16_t first = character.front().unicode();
    if (first < ascii_.size() && ascii_[first] != 0) {
        return ascii_[first] / fractions;
    }
    const char32_t code =
        character.size() == 2 ? QChar::surrogateToUcs4(character[0], character[1]) : char32_t(first);
    if (code < alphabetsEnd) {
        float& width = alphabets_[code];
        if (width < 0) {
            width = static_cast<float>(metrics_.horizontalAdvance(character.toString()));
        }
        return static_cast<double>(width);
    }
    const auto known = others_.constFind(code);
    if (known != others_.constEnd()) {
        return *known;
    }
    return *others_.insert(code, metrics_.horizontalAdvance(character.toString()));
}

} // namespace corvel

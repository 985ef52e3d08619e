#include "common/TextEncoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace corvel {

namespace {

// Windows-1252 bytes 0x80 to 0x9F as code points; every other byte is its own code point. The undefined
// ones stand for themselves.
constexpr std::array<std::uint16_t, 32> highControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr std::uint32_t firstHigh = 0x80;
constexpr std::uint32_t lastHigh = 0x9F;

void appendUtf8(std::string& text, std::uint32_t codePoint) {
    const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0U | codePoint >> 6U);
        put(0x80U | (codePoint & 0x3FU));
    } else {
        put(0xE0U | codePoint >> 12U);
        put(0x80U | (codePoint >> 6U & 0x3FU));
        put(0x80U | (codePoint & 0x3FU));
    }
}

struct Decoded {
    std::uint32_t codePoint = 0;
    std::size_t length = 0; // 0: the bytes are no well-formed character
};

// The character at the start of bytes, which are not empty.
Decoded decodeOne(std::string_view bytes) {
    const auto byteAt = [bytes](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
    };
    const std::uint32_t lead = byteAt(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    std::size_t length = 0;
    std::uint32_t smallest = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        smallest = 0x80;
    } else if ((lead & 0xF0U) == 0xE0) {
        length = 3;
        smallest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        smallest = 0x10000;
    }
    if (length == 0 || bytes.size() < length) {
        return {};
    }
    std::uint32_t codePoint = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!continuesCharacter(bytes[i])) {
            return {};
        }
        codePoint = codePoint << 6U | (byteAt(i) & 0x3FU);
    }
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < smallest || codePoint > 0x10FFFF || isSurrogate) {
        return {};
    }
    return {codePoint, length};
}

// How many bytes at the start of bytes are ASCII; eight are looked at together.
std::size_t asciiPrefix(std::string_view bytes) {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t size = 0;
    for (std::uint64_t eight = 0; size + sizeof eight <= bytes.size(); size += sizeof eight) {
        std::memcpy(&eight, bytes.data() + size, sizeof eight);
        if ((eight & highBits) != 0) {
            break;
        }
    }
    while (size < bytes.size() && static_cast<unsigned char>(bytes[size]) < 0x80) {
        ++size;
    }
    return size;
}

struct CodeRange {
    std::uint32_t first;
    std::uint32_t last;
};

// Characters outside ASCII that steer the display or show nothing at all, so that two names could look alike:
// the property Default_Ignorable_Code_Point of Unicode 15 (DerivedCoreProperties), and what the comments say.
constexpr std::array<CodeRange, 20> unseen = {{
    {0x80, 0x9F}, // C1 controls
    {0x00AD, 0x00AD},
    {0x034F, 0x034F},
    {0x061C, 0x061C},
    {0x115F, 0x1160},
    {0x17B4, 0x17B5},
    {0x180B, 0x180F},
    {0x200B, 0x200F},
    {0x2028, 0x202E}, // line and paragraph separator too
    {0x2060, 0x206F},
    {0x2800, 0x2800}, // Braille pattern without a dot
    {0x3164, 0x3164},
    {0xFDD0, 0xFDEF}, // non-characters
    {0xFE00, 0xFE0F},
    {0xFEFF, 0xFEFF},
    {0xFFA0, 0xFFA0},
    {0xFFF0, 0xFFFC}, // annotations and object
                      // replacement too
    {0x1BCA0, 0x1BCA3},
    {0x1D173, 0x1D17A},
    {0xE0000, 0xE0FFF},
}};

bool isUnseen(std::uint32_t codePoint) {
    return (codePoint & 0xFFFEU) == 0xFFFE || // the last two of every plane are non-characters
           std::ranges::any_of(unseen, [codePoint](const CodeRange& range) {
               return codePoint >= range.first && codePoint <= range.last;
           });
}

void appendVisible(std::string& text, std::uint32_t codePoint, std::string_view bytes) {
    if (codePoint < 0x20) {
        appendUtf8(text, 0x2400 + codePoint); // the Unicode block of pictures for control characters
    } else if (codePoint == 0x7F) {
        appendUtf8(text, 0x2421);
    } else if (isUnseen(codePoint)) {
        std::array<char, 8> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), codePoint, 16).ptr;
        text += "<U+";
        text.append(digits.data(), end);
        text += '>';
    } else {
        text += bytes;
    }
}

} // namespace

bool isValidUtf8(std::string_view bytes) {
    while (true) {
        bytes.remove_prefix(asciiPrefix(bytes));
        if (bytes.empty()) {
            return true;
        }
        const Decoded decoded = decodeOne(bytes);
        if (decoded.length == 0) {
            return false;
        }
        bytes.remove_prefix(decoded.length);
    }
}

std::string toUtf8(std::string_view bytes) {
    return isValidUtf8(bytes) ? std::string(bytes) : fromWindows1252(bytes);
}

std::string fromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const std::uint32_t value = static_cast<unsigned char>(byte);
        appendUtf8(text, value >= firstHigh && value <= lastHigh ? highControls[value - firstHigh] : value);
    }
    return text;
}

std::string fromUtf8(std::string_view text, TextEncoding encoding) {
    if (encoding == TextEncoding::utf8) {
        return std::string(text);
    }
    std::string bytes;
    for (std::string_view rest = text; !rest.empty();) {
        const Decoded decoded = decodeOne(rest);
        if (decoded.length == 0) {
            return std::string(text);
        }
        rest.remove_prefix(decoded.length);
        const auto* high = std::ranges::find(highControls, decoded.codePoint);
        if (high != highControls.end()) {
            bytes += static_cast<char>(firstHigh + static_cast<std::uint32_t>(high - highControls.begin()));
        } else if (decoded.codePoint < firstHigh ||
                   (decoded.codePoint > lastHigh && decoded.codePoint <= 0xFF)) {
            bytes += static_cast<char>(decoded.codePoint);
        } else {
            return std::string(text);
        }
    }
    return bytes;
}

std::string_view beginningOf(std::string_view text, std::size_t size) {
    constexpr std::size_t mostContinuing = 3;
    if (size >= text.size()) {
        return text;
    }
    const std::size_t least = size - std::min(size, mostContinuing);
    while (size > least && continuesCharacter(text[size])) {
        --size;
    }
    return text.substr(0, size);
}

std::string endOfLines(std::string_view lines, std::size_t size) {
    const std::size_t start = lines.size() - size;
    const std::size_t before = start == 0 ? std::string_view::npos : lines.rfind("\r\n", start - 1);
    const std::size_t lineStart = before == std::string_view::npos ? 0 : before + 2;
    if (lineStart >= start) {
        return std::string(lines.substr(start));
    }
    const std::size_t end = std::min(lines.find("\r\n", start), lines.size());
    std::string_view cut = lines.substr(start, end - start);
    std::string text;
    if (isValidUtf8(lines.substr(lineStart, end - lineStart))) {
        cut.remove_prefix(
            static_cast<std::size_t>(std::ranges::find_if_not(cut, continuesCharacter) - cut.begin()));
        text = cut;
    } else {
        text = fromWindows1252(cut);
    }
    return text.append(lines.substr(end));
}

void SeenTexts::read(std::string_view bytes) {
    while (!bytes.empty() && !isUtf8Seen_) { // after which nothing changes any more
        if (word_.empty()) {
            bytes.remove_prefix(asciiPrefix(bytes));
        }
        const std::size_t size = std::min(bytes.find_first_of(" \r\n"), bytes.size());
        word_ += bytes.substr(0, size);
        bytes.remove_prefix(size);
        if (!bytes.empty() && !word_.empty()) {
            (isValidUtf8(word_) ? isUtf8Seen_ : isOtherSeen_) = true;
            word_.clear();
        }
    }
}

std::string visibleText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const auto isPlain = [](char byte) { return byte >= ' ' && byte <= '~'; };
        const auto end = std::ranges::find_if_not(text, isPlain);
        const auto plain = static_cast<std::size_t>(end - text.begin());
        result += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) {
            break;
        }
        const Decoded decoded = decodeOne(text);
        const std::size_t length = std::max<std::size_t>(decoded.length, 1);
        appendVisible(result, decoded.codePoint, text.substr(0, length));
        text.remove_prefix(length);
    }
    return result;
}

std::size_t characterCount(std::string_view text) {
    return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, continuesCharacter));
}

std::size_t bytesOfCharacters(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    for (; end < text.size() && (count > 0 || continuesCharacter(text[end])); ++end) {
        count -= continuesCharacter(text[end]) ? 0 : 1;
    }
    return end;
}

} // namespace corvel

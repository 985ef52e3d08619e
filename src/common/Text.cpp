#include "common/Text.h"

#include "common/Numbers.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace corvel {

namespace {

char upperAscii(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - ('a' - 'A')) : character;
}

// The lower-case form of a code point that UTF-8 writes in two bytes (U+0080 to U+07FF).
unsigned foldTwoByte(unsigned codePoint) {
    const auto within = [codePoint](unsigned first, unsigned last) {
        return codePoint >= first && codePoint <= last;
    };
    if ((within(0xC0, 0xDE) && codePoint != 0xD7) || within(0x391, 0x3A9) || within(0x410, 0x42F)) {
        return codePoint + 0x20;
    }
    if (within(0x400, 0x40F)) {
        return codePoint + 0x50;
    }
    if (codePoint == 0x178) {
        return 0xFF; // the one Latin-1 letter whose upper case lies elsewhere
    }
    // Latin Extended-A and the rest of Cyrillic hold pairs: the upper-case letter, then the lower-case one.
    const bool pairsFromEven = within(0x100, 0x137) || within(0x14A, 0x177) || within(0x460, 0x481);
    if (pairsFromEven && codePoint != 0x130) {
        return codePoint | 1U;
    }
    const bool pairsFromOdd = within(0x139, 0x148) || within(0x179, 0x17E);
    if (pairsFromOdd && codePoint % 2 == 1) {
        return codePoint + 1;
    }
    return codePoint;
}

// How many bytes at the front of text the symbol stands for; 0 where it does not match. A character beyond
// ASCII is its first byte with the continuation bytes behind it.
std::size_t matchedBytes(char symbol, std::string_view text) {
    switch (symbol) {
    case '?': {
        std::size_t size = 1;
        while (static_cast<unsigned char>(text[0]) >= 0xC0 && size < text.size() &&
               continuesCharacter(text[size])) {
            ++size;
        }
        return size;
    }
    case '#':
        return isDigit(text[0]) ? 1 : 0;
    default:
        return symbol == text[0] ? 1 : 0;
    }
}

} // namespace

// What nobody reads again a compiler may leave unwritten, unless it is volatile.
void wipe(std::string& text) {
    text.resize(text.capacity());
    volatile char* const bytes = text.data();
    for (std::size_t i = 0; i < text.size(); ++i) {
        bytes[i] = 0;
    }
    text.clear();
}

std::vector<std::string_view> split(std::string_view text, std::string_view separator, std::size_t most) {
    std::vector<std::string_view> pieces;
    while (pieces.size() + 1 < most) {
        const std::size_t end = text.find(separator);
        if (end == std::string_view::npos) {
            break;
        }
        pieces.push_back(text.substr(0, end));
        text.remove_prefix(end + separator.size());
    }
    pieces.push_back(text);
    return pieces;
}

bool cutLeadingFields(std::string_view text, std::span<std::string_view> fields) {
    std::size_t count = 0;
    std::size_t start = 0;
    // Fields are short: looking at every byte is quicker here than a library search that is set up for each.
    for (std::size_t i = 0; count + 1 < fields.size() && i + fieldSeparator.size() <= text.size(); ++i) {
        if (text[i + 1] != '|' || text[i] != ' ' || text[i + 2] != ' ') {
            continue;
        }
        fields[count++] = text.substr(start, i - start);
        i += fieldSeparator.size() - 1;
        start = i + 1;
    }
    if (count + 1 != fields.size()) {
        return false;
    }
    fields[count] = text.substr(start);
    return true;
}

bool cutFields(std::string_view text, std::span<std::string_view> fields) {
    return cutLeadingFields(text, fields) && fields.back().find(fieldSeparator) == std::string_view::npos;
}

std::string join(const std::vector<std::string_view>& pieces, std::string_view separator) {
    std::string result;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0) {
            result += separator;
        }
        result += pieces[i];
    }
    return result;
}

std::string replaceAll(std::string_view text, std::string_view what, std::string_view replacement) {
    return what.empty() ? std::string(text) : join(split(text, what), replacement);
}

std::string_view trimLeading(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

std::string_view trim(std::string_view text) {
    text = trimLeading(text);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

std::string toLower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), lowerAscii);
    return result;
}

std::string toUpper(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), upperAscii);
    return result;
}

std::string foldCase(std::string_view text) {
    std::string result(text);
    for (std::size_t i = 0; i < result.size(); ++i) {
        const unsigned lead = static_cast<unsigned char>(result[i]);
        if (lead < 0x80) {
            result[i] = lowerAscii(result[i]);
        } else if (lead >= 0xC2 && lead < 0xE0 && i + 1 < result.size()) {
            if (!continuesCharacter(result[i + 1])) {
                continue; // not UTF-8; the byte stays, and so must the one behind it
            }
            const unsigned trail = static_cast<unsigned char>(result[i + 1]);
            const unsigned folded = foldTwoByte((lead & 0x1FU) << 6U | (trail & 0x3FU));
            result[i] = static_cast<char>(0xC0U | folded >> 6U);
            result[++i] = static_cast<char>(0x80U | (folded & 0x3FU));
        }
    }
    return result;
}

void appendFolded(std::string& text, std::string_view bytes) {
    if (std::ranges::all_of(bytes, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; })) {
        const auto first = text.insert(text.end(), bytes.begin(), bytes.end());
        std::transform(first, text.end(), first, lowerAscii);
    } else {
        text += foldCase(toUtf8(bytes));
    }
}

std::uint64_t eightBytes(std::string_view text, std::size_t place) {
    std::uint64_t bytes = 0;
    for (std::size_t i = place; i < place + sizeof bytes; ++i) {
        bytes = bytes << 8U | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
    }
    return bytes;
}

bool isOneLine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

bool matchesPattern(std::string_view text, std::string_view pattern) {
    std::size_t position = 0;
    std::size_t symbol = 0;
    // Where to go on after a mismatch: the last star seen, and how far it has swallowed the text.
    std::size_t star = std::string_view::npos;
    std::size_t swallowed = 0;
    while (position < text.size()) {
        if (symbol < pattern.size() && pattern[symbol] == '*') {
            star = symbol++;
            swallowed = position;
        } else if (const std::size_t matched =
                       symbol < pattern.size() ? matchedBytes(pattern[symbol], text.substr(position)) : 0;
                   matched > 0) {
            ++symbol;
            position += matched;
        } else if (star != std::string_view::npos) {
            symbol = star + 1;
            position = ++swallowed;
        } else {
            return false;
        }
    }
    while (symbol < pattern.size() && pattern[symbol] == '*') {
        ++symbol;
    }
    return symbol == pattern.size();
}

namespace {

std::size_t lengthOf(std::string_view text) {
    return isValidUtf8(text) ? characterCount(text) : text.size();
}

// The first count characters of text.
std::string_view leftPart(std::string_view text, std::size_t count) {
    return text.substr(0, isValidUtf8(text) ? bytesOfCharacters(text, count) : count);
}

std::string megabytes(std::string_view kilobytes) {
    constexpr double largest = std::numeric_limits<double>::max();
    return numberText(std::clamp(leadingNumber(kilobytes), -largest, largest) / 1024, 0);
}

std::string repeated(std::string_view character, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += character;
    }
    return text;
}

std::string_view valueOf(std::string_view name, const MenuVariables& variables) {
    const std::string wanted = toLower(name);
    const auto found = std::ranges::find_if(
        variables, [&](const MenuVariable& variable) { return toLower(variable.sName) == wanted; });
    return found == variables.end() ? std::string_view() : found->sValue;
}

// The replacement for a placeholder with this text between its brackets.
std::string expandPlaceholder(std::string_view inner, const MenuVariables& variables) {
    constexpr double widest = 4096;
    std::vector<std::string_view> pieces = split(inner, ",");
    pieces.resize(std::max<std::size_t>(pieces.size(), 5));
    const auto width =
        static_cast<std::size_t>(std::nearbyint(std::clamp(leadingNumber(pieces[1]), 0.0, widest)));
    const std::string_view align = pieces[2];
    const std::string_view fill = pieces[3].empty() || pieces[3] == "$" ? " " : leftPart(pieces[3], 1);
    std::string shown(valueOf(pieces[0], variables));
    if (pieces[3] == "$") {
        shown = megabytes(shown);
    }
    if (pieces[4] == "1") {
        shown = leftPart(shown, width);
    }
    const std::size_t room = width - std::min(width, lengthOf(shown));
    const std::size_t before = align == "R" ? room : align == "C" ? room / 2 : 0;
    return repeated(fill, before) + shown + repeated(fill, room - before);
}

} // namespace

std::vector<TemplatePiece> expandPieces(std::string_view text, const MenuVariables& variables) {
    constexpr std::string_view opening = "%(";
    std::vector<TemplatePiece> pieces;
    while (!variables.empty()) {
        const std::size_t start = text.find(opening);
        const std::size_t end = text.find(')', start);
        if (start == std::string_view::npos || end == std::string_view::npos ||
            end == start + opening.size()) {
            break;
        }
        const std::string_view inner = text.substr(start + opening.size(), end - start - opening.size());
        pieces.push_back({std::string(text.substr(0, start))});
        pieces.push_back({expandPlaceholder(inner, variables), true});
        text.remove_prefix(end + 1);
    }
    pieces.push_back({std::string(text)});
    return pieces;
}

std::string ExpandTemplate(std::string_view text, const MenuVariables& variables) {
    std::string result;
    for (const TemplatePiece& piece : expandPieces(text, variables)) {
        result += piece.text;
    }
    return result;
}

} // namespace corvel

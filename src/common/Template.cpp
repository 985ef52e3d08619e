#include "common/Template.h"

#include "common/Numbers.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvel {

namespace {

std::size_t lengthOf(std::string_view text) {
    return isValidUtf8(text) ? characterCount(text) : text.size();
}

// The first count characters of text.
std::string_view leftPart(std::string_view text, std::size_t count) {
    if (!isValidUtf8(text)) {
        return text.substr(0, count);
    }
    std::size_t end = 0;
    for (; end < text.size() && (count > 0 || continuesCharacter(text[end])); ++end) {
        count -= continuesCharacter(text[end]) ? 0 : 1;
    }
    return text.substr(0, end);
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

std::string ExpandTemplate(std::string_view text, const MenuVariables& variables) {
    constexpr std::string_view opening = "%(";
    std::string result;
    while (!variables.empty()) {
        const std::size_t start = text.find(opening);
        const std::size_t end = text.find(')', start);
        if (start == std::string_view::npos || end == std::string_view::npos ||
            end == start + opening.size()) {
            break;
        }
        const std::string_view inner = text.substr(start + opening.size(), end - start - opening.size());
        result.append(text.substr(0, start)).append(expandPlaceholder(inner, variables));
        text.remove_prefix(end + 1);
    }
    return result.append(text);
}

} // namespace corvel

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

void appendRepeated(std::string& text, std::string_view character, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        text += character;
    }
}

std::string_view valueOf(std::string_view name, const MenuVariables& variables) {
    const std::string wanted = toLower(name);
    const auto found = std::ranges::find_if(
        variables, [&](const MenuVariable& variable) { return toLower(variable.sName) == wanted; });
    return found == variables.end() ? std::string_view() : found->sValue;
}

// The replacement for a placeholder with this text between its brackets.
std::string expandPlaceholder(std::string_view inner, const MenuVariables& variables) {
    std::vector<std::string_view> pieces = split(inner, ",");
    pieces.resize(std::max<std::size_t>(pieces.size(), 5));
    const double width = std::clamp(leadingNumber(pieces[1]), 0.0, static_cast<double>(widestField));
    const FieldAlign align = pieces[2] == "R"   ? FieldAlign::right
                             : pieces[2] == "C" ? FieldAlign::centre
                                                : FieldAlign::left;
    return FormatField(valueOf(pieces[0], variables), static_cast<std::size_t>(std::nearbyint(width)), align,
                       pieces[3], pieces[4] == "1");
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

std::string FormatField(std::string_view value, std::size_t width, FieldAlign align, std::string_view fill,
                        bool cut) {
    width = std::min(width, widestField);
    std::string shown(value);
    if (fill == "$") {
        shown = megabytes(value);
        fill = {};
    }
    if (cut) {
        shown = leftPart(shown, width);
    }
    const std::size_t length = lengthOf(shown);
    if (width <= length) {
        return shown;
    }
    const std::string_view character = fill.empty() ? std::string_view(" ") : leftPart(fill, 1);
    const std::size_t room = width - length;
    const std::size_t before = align == FieldAlign::right ? room : align == FieldAlign::centre ? room / 2 : 0;
    std::string result;
    appendRepeated(result, character, before);
    result += shown;
    appendRepeated(result, character, room - before);
    return result;
}

} // namespace corvel

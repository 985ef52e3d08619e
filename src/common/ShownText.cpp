#include "common/ShownText.h"

#include "common/Numbers.h"
#include "common/TextEncoding.h"

namespace corvel {

namespace {

std::string countText(std::size_t characters) {
    return groupThousands(std::to_string(characters), ",");
}

// Shortened before it is made visible, which would cost more; but a symbol can be longer than what it shows.
std::string shown(std::string_view bytes, std::size_t most) {
    constexpr std::size_t mark = 40; // is shorter
    return shortened(visibleText(shortened(toUtf8(bytes), most)), most + mark);
}

} // namespace

std::string shortened(std::string_view text, std::size_t most) {
    const std::size_t characters = text.size() <= most ? 0 : characterCount(text);
    if (characters <= most) {
        return std::string(text);
    }
    const std::size_t ofEnd = most / 3;
    std::size_t end = text.size();
    for (std::size_t i = 0; i < ofEnd; ++i) {
        do {
            --end;
        } while (continuesCharacter(text[end]));
    }
    const std::size_t left = characters - most;
    return std::string(text.substr(0, bytesOfCharacters(text, most - ofEnd)))
        .append(" ... (")
        .append(countText(left))
        .append(left == 1 ? " character) ... " : " characters) ... ")
        .append(text.substr(end));
}

std::string moreMark(std::size_t characters) {
    return " ... (" + countText(characters) + (characters == 1 ? " more character)" : " more characters)");
}

std::string wrapped(std::string_view text, std::size_t longest) {
    std::string result;
    while (true) {
        const std::string_view line = text.substr(0, bytesOfCharacters(text, longest + 1));
        std::size_t end = line.find('\n');
        bool isGap = true; // what stands there gives way
        if (end == std::string_view::npos && characterCount(line) <= longest) {
            return result.append(line);
        }
        if (end == std::string_view::npos) {
            end = line.rfind(' ');
            if (end == std::string_view::npos || end == 0) {
                end = bytesOfCharacters(line, longest);
                isGap = false;
            }
        }
        result.append(text.substr(0, end)).append("\n");
        text.remove_prefix(end + (isGap ? 1 : 0));
    }
}

std::string shownName(std::string_view name) {
    return shown(name, longestName);
}

std::string shownLine(std::string_view line) {
    return shown(line, longestLine);
}

} // namespace corvel

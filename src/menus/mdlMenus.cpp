#include "menus/mdlMenus.h"

#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

// A text with values in it, and which of its characters are theirs.
struct Marked {
    std::string text;
    std::string marks; // as long as text

    static constexpr char written = 'w';
    static constexpr char touched = 't'; // written, beside a value that is empty or blank
    static constexpr char value = 'v';

    Marked part(std::size_t start, std::size_t count) const {
        return {text.substr(start, count), marks.substr(start, count)};
    }
    bool hasValue() const { return marks.find(value) != std::string::npos; }
    std::string_view writtenStart() const { return std::string_view(text).substr(0, marks.find(value)); }
};

Marked marked(const std::vector<TemplatePiece>& pieces) {
    Marked result;
    bool isBehindEmpty = false;
    for (const TemplatePiece& piece : pieces) {
        const std::size_t start = result.text.size();
        result.text += piece.text;
        result.marks.append(piece.text.size(), piece.isValue ? Marked::value : Marked::written);
        if (piece.text.find_first_not_of(' ') == std::string::npos) {
            isBehindEmpty = isBehindEmpty || piece.isValue;
            if (piece.isValue && start > 0 && result.marks[start - 1] == Marked::written) {
                result.marks[start - 1] = Marked::touched;
            }
        } else if (std::exchange(isBehindEmpty, false) && !piece.isValue) {
            result.marks[start] = Marked::touched;
        }
    }
    return result;
}

// Without the blanks at its start.
Marked withoutIndent(const Marked& text) {
    return text.part(std::min(text.text.find_first_not_of(' '), text.text.size()), std::string::npos);
}

// What "exec" opens. Only a quote that the author wrote begins or ends it.
Marked execTarget(const Marked& argument) {
    const Marked text = withoutIndent(argument);
    if (text.text.starts_with('"') && text.marks.front() != Marked::value) {
        for (std::size_t end = 1; end < text.text.size(); ++end) {
            if (text.text[end] == '"' && text.marks[end] != Marked::value) {
                return text.part(1, end - 1);
            }
        }
    }
    return text.part(0, text.text.find(' '));
}

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F';
}

// Whether a value has one of the characters that is tells.
template <typename Is>
bool hasInValue(const Marked& text, Is is) {
    for (std::size_t i = 0; i < text.text.size(); ++i) {
        if (text.marks[i] == Marked::value && is(text.text[i])) {
            return true;
        }
    }
    return false;
}

// Whether a value makes a step of the path, a part or an end of one, that leads up, be it by being empty: of
// dots alone, in clear or as an address has them; blanks and dots at the end of a name count for nothing on
// Windows.
bool leadsUp(const Marked& path) {
    constexpr std::string_view stepEnds = "/\\";
    for (std::size_t start = 0; start <= path.text.size();) {
        const std::size_t end = std::min(path.text.find_first_of(stepEnds, start), path.text.size());
        const Marked step = path.part(start, end - start);
        const std::string dots = replaceAll(toLower(step.text), "%2e", ".");
        const bool isAuthors = step.marks.find_first_not_of(Marked::written) == std::string::npos &&
                               (start == 0 || path.marks[start - 1] != Marked::value) &&
                               (end == path.text.size() || path.marks[end] != Marked::value);
        if (!isAuthors && std::ranges::count(dots, '.') > 1 &&
            dots.find_first_not_of(". ") == std::string::npos) {
            return true;
        }
        start = end + 1;
    }
    return false;
}

// Whether a text is an address (RFC 3986): a letter of a drive is no scheme.
bool isAddress(std::string_view text) {
    const std::string lower = toLower(text);
    const std::size_t colon = lower.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789+-.");
    return lower.starts_with("www.") || (colon != std::string::npos && colon > 1 && lower[colon] == ':');
}

bool hasLetter(std::string_view text) {
    return std::ranges::any_of(text, [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
               static_cast<unsigned char>(byte) >= 0x80;
    });
}

void readExec(MenuCommand& command, const Marked& argument) {
    const Marked target = execTarget(argument);
    command.target = target.text;
    if (!isOneLine(target.text)) {
        command.problem = "holds a line break or a NUL character";
    } else if (leadsUp(target)) {
        command.problem = "leaves its folder";
    } else if (target.hasValue()) {
        const std::string_view start = target.writtenStart();
        command.isServersChoice = !hasLetter(start) || start.find_first_of("/\\:") == std::string_view::npos;
        if (command.isServersChoice && target.text.starts_with('-')) {
            command.problem = "begins with a dash";
        } else if (command.isServersChoice && isAddress(target.text)) {
            command.problem = "is an address";
        }
    }
}

void readKill(MenuCommand& command, const Marked& argument, bool isValueEmpty) {
    command.target = trim(argument.text);
    if (hasInValue(argument, [](char byte) { return byte == '*' || byte == '?' || byte == '#'; })) {
        command.problem = "holds a wildcard that the server chose";
    } else if (isValueEmpty) {
        command.problem = "has a value that is empty";
    } else {
        command.isServersChoice = argument.hasValue() && !hasLetter(argument.writtenStart());
    }
}

} // namespace

MenuCommand menuCommand(std::string_view line, const MenuVariables& variables) {
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string_view action = line.substr(0, end);
    const bool asksFirst = action.size() >= 2 && action.starts_with('%');
    const std::vector<TemplatePiece> pieces =
        expandPieces(line.substr(std::min(end + 1, line.size())), variables);
    const Marked argument = marked(pieces);
    MenuCommand command{.action = std::string(action.substr(asksFirst ? 1 : 0)),
                        .asksFirst = asksFirst,
                        .argument = argument.text};
    if (command.action == "exec") {
        readExec(command, argument);
    } else if (command.action == "kill") {
        readKill(command, argument, std::ranges::any_of(pieces, [](const TemplatePiece& piece) {
                     return piece.isValue && piece.text.empty();
                 }));
    }
    const bool leavesProgram = !command.target.empty() || command.action == "copy";
    if (leavesProgram && command.problem.empty() && hasInValue(argument, isControl)) {
        command.problem = "holds a control character";
    }
    return command;
}

std::vector<MenuItem> expandMenu(const std::vector<MenuEntry>& entries, const MenuVariables& variables) {
    std::vector<MenuItem> items;
    items.reserve(entries.size());
    for (const MenuEntry& entry : entries) {
        items.push_back({.caption = ExpandTemplate(entry.caption, variables),
                         .command = ExpandTemplate(entry.command, variables),
                         .isSeparator = entry.caption == "-",
                         .action = menuCommand(entry.command, variables)});
    }
    return items;
}

std::string menuQuestion(std::string_view argument) {
    return "Are u sure u want to perform this command?\r\n\r\n" + visibleText(argument);
}

} // namespace corvel

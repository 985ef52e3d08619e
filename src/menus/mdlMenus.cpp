#include "menus/mdlMenus.h"

#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>

namespace corvel {

namespace {

// A text with values in it, and which of its characters are theirs.
struct Marked {
    std::string text;
    std::string marks; // as long as text

    static constexpr char written = 'w';
    static constexpr char touched = 't'; // written, beside a value
    static constexpr char value = 'v';

    Marked part(std::size_t start, std::size_t count) const {
        return {text.substr(start, count), marks.substr(start, count)};
    }
    bool hasValue() const { return marks.find(value) != std::string::npos; }
    std::string_view writtenStart() const { return std::string_view(text).substr(0, marks.find(value)); }
};

Marked marked(const std::vector<TemplatePiece>& pieces) {
    Marked result;
    bool isBehindValue = false;
    for (const TemplatePiece& piece : pieces) {
        const std::size_t start = result.text.size();
        if (piece.isValue && start > 0 && result.marks.back() == Marked::written) {
            result.marks.back() = Marked::touched;
        }
        result.text += piece.text;
        result.marks.append(piece.text.size(), piece.isValue ? Marked::value : Marked::written);
        if (isBehindValue && !piece.isValue && !piece.text.empty()) {
            result.marks[start] = Marked::touched;
        }
        isBehindValue = piece.isValue;
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

// Whether a step of the path leads up that the author did not write as it stands: a value is in it or was
// beside it, be it an empty one. Such a step is of dots alone, in clear or as an address has them; blanks and
// dots at the end of a name count for nothing on Windows.
bool leadsUp(const Marked& path) {
    constexpr std::string_view stepEnds = "/\\";
    for (std::size_t start = 0; start <= path.text.size();) {
        const std::size_t end = std::min(path.text.find_first_of(stepEnds, start), path.text.size());
        const Marked step = path.part(start, end - start);
        const std::string dots = replaceAll(toLower(step.text), "%2e", ".");
        const bool isAuthors = step.marks.find_first_not_of(Marked::written) == std::string::npos;
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

// Whether nothing that the author wrote says what kind of target it is: asked of the entry with a letter for
// each value, so that no value, an empty one as little as any other, takes the question away.
bool isValuesTarget(std::vector<TemplatePiece> pieces) {
    for (TemplatePiece& piece : pieces) {
        if (piece.isValue) {
            piece.text = "x";
        }
    }
    const Marked target = execTarget(marked(pieces));
    const std::string_view start = target.writtenStart();
    return target.hasValue() && (!hasLetter(start) || start.find_first_of("/\\:") == std::string_view::npos);
}

void readExec(MenuCommand& command, const Marked& argument, const std::vector<TemplatePiece>& pieces) {
    const Marked target = execTarget(argument);
    command.target = target.text;
    command.isServersChoice = !target.text.empty() && isValuesTarget(pieces);
    if (!isOneLine(target.text)) {
        command.problem = "holds a line break or a NUL character";
    } else if (leadsUp(target)) {
        command.problem = "leaves its folder";
    } else if (command.isServersChoice && target.text.starts_with('-')) {
        command.problem = "begins with a dash";
    } else if (command.isServersChoice && isAddress(target.text)) {
        command.problem = "is an address";
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
        readExec(command, argument, pieces);
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

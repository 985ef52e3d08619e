// Text encodings, patterns, filters and what else reads a text for itself. The first line is a pattern.
#include "admin/ShownCommand.h"
#include "common/Numbers.h"
#include "common/RowFilter.h"
#include "common/ShownText.h"
#include "common/Text.h"
#include "common/TextEncoding.h"
#include "Fuzz.h"
#include "net/LogText.h"
#include "net/ReplyBuffer.h"

#include <algorithm>
#include <string>
#include <vector>

namespace corvel::fuzz {

namespace {

std::vector<std::string_view> charactersOf(std::string_view text) {
    std::vector<std::string_view> characters;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t size = 1;
        while (i + size < text.size() && continuesCharacter(text[i + size])) {
            ++size;
        }
        characters.push_back(text.substr(i, size));
        i += size;
    }
    return characters;
}

// The textbook's table: whether the first characters of the text match the first symbols of the pattern.
bool matchesByTable(std::string_view text, std::string_view pattern) {
    const std::vector<std::string_view> characters = charactersOf(text);
    std::vector<char> row(characters.size() + 1);
    row[0] = 1;
    for (const std::string_view symbol : charactersOf(pattern)) {
        std::vector<char> next(row.size());
        next[0] = static_cast<char>(row[0] != 0 && symbol == "*");
        for (std::size_t i = 0; i < characters.size(); ++i) {
            const bool isOne =
                symbol == "?" || (symbol == "#" ? isDigit(characters[i].front()) : symbol == characters[i]);
            next[i + 1] =
                static_cast<char>(symbol == "*" ? row[i + 1] != 0 || next[i] != 0 : row[i] != 0 && isOne);
        }
        row = std::move(next);
    }
    return row.back() != 0;
}

void checkEncodings(std::string_view bytes) {
    const std::string text = toUtf8(bytes);
    require(isValidUtf8(text), "what is read as text is UTF-8");
    require(text == bytes || fromUtf8(text, TextEncoding::windows1252) == bytes, "no byte is lost");
    require(fromUtf8(fromWindows1252(bytes), TextEncoding::windows1252) == bytes, "nor of Windows-1252");
    const std::string shown = visibleText(text);
    require(isValidUtf8(shown) && std::ranges::none_of(shown,
                                                       [](char byte) {
                                                           return static_cast<unsigned char>(byte) < ' ' ||
                                                                  byte == '\x7F';
                                                       }),
            "what is shown has no control character");
    require(visibleText(shown) == shown, "what is shown can be shown");
    require(characterCount(text) <= text.size(), "a character has a byte");
    const std::string folded = foldCase(text);
    require(isValidUtf8(folded) && foldCase(folded) == folded &&
                characterCount(folded) == characterCount(text),
            "folding keeps the characters");
    std::string appended;
    appendFolded(appended, bytes);
    require(appended == folded, "folding at once is folding");
}

void checkSeen(std::string_view bytes) {
    SeenTexts atOnce;
    SeenTexts byBytes;
    atOnce.read(bytes);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        byBytes.read(bytes.substr(i, 1));
    }
    require(atOnce.encoding() == byBytes.encoding(), "the encoding does not depend on the cuts");
}

// A text that is cut reads as it does in the whole.
void checkCuts(std::string_view bytes) {
    const std::string whole = toUtf8(bytes);
    for (const std::size_t size : {bytes.size() / 3, bytes.size() / 2, bytes.size()}) {
        const std::string_view beginning = beginningOf(bytes, size);
        require(beginning.size() <= size && beginning.size() + 3 >= std::min(size, bytes.size()) &&
                    (!isValidUtf8(bytes) || isValidUtf8(beginning)),
                "a beginning is as long as wanted but for a character");
        require(isValidUtf8(bytes) || bytes.find("\r\n") != std::string_view::npos || size == bytes.size() ||
                    whole.ends_with(endOfLines(bytes, size)),
                "the end of a line reads as in the line");
    }
    for (const std::size_t most : {1U, 10U, 30U}) {
        constexpr std::size_t mark = 40;
        const std::string shown = shortened(whole, most);
        require(isValidUtf8(shown) && characterCount(shown) <= most + mark, "a text is shortened");
        const std::string lines = wrapped(whole, most);
        require(isValidUtf8(lines), "a text is wrapped");
        for (const std::string_view line : split(lines, "\n")) {
            require(characterCount(line) <= most, "and no line is too long");
        }
    }
    moreMark(bytes.size());
    require(isValidUtf8(shownName(bytes)) && isValidUtf8(shownLine(bytes)), "what is shown is UTF-8");
}

void checkPieces(std::string_view bytes, std::string_view separator) {
    require(join(split(bytes, separator), separator) == bytes, "pieces put together are the whole");
    require(split(bytes, separator, 2).size() <= 2, "no more pieces than wanted");
    require(replaceAll(bytes, separator, separator) == bytes, "replacing by the same changes nothing");
    require(toLower(toUpper(bytes)) == toLower(bytes), "the case of letters alone changes");
}

void checkTelnet(std::string_view line) {
    TelnetReader reader;
    const std::string sent = telnetEscaped(line) + "\r\n";
    require(reader.read(sent) == std::string(line) + "\r\n", "a line arrives as it was sent");
}

void checkLog(std::string_view bytes) {
    constexpr std::size_t limit = 60;
    LogText log(limit, LogText::Style::linesEnd);
    for (const std::string_view message : split(bytes, "\n\n")) {
        log.append(message, "12:34:56");
    }
    const std::string text = log.text();
    require(isValidUtf8(text) && characterCount(text) <= limit, "a log keeps to its limit");
    require(log.lines().size() == static_cast<std::size_t>(std::ranges::count(text, '\n')),
            "each line of a log is of a kind");
    log.clear();
    require(log.text().empty(), "a log can be cleared");
}

void checkFilter(std::string_view typed, std::string_view bytes) {
    RowTexts texts;
    for (const std::string_view row : split(bytes, "\n")) {
        for (const std::string_view cell : split(row, "\t")) {
            texts.addCell(cell);
        }
        texts.endRow();
    }
    const std::vector<std::string> words = filterWords(toUtf8(typed));
    const std::vector<int> rows = matchingRows(texts, words);
    require(std::ranges::is_sorted(rows), "a filter keeps the order");
    require(matchingRows(texts, words, rows) == rows, "what is left passes again");
    require(narrows(words, words), "the same words narrow");
}

} // namespace

void check(std::string_view bytes) {
    const std::string_view first = bytes.substr(0, bytes.find('\n'));
    const std::string_view rest = bytes.substr(std::min(first.size() + 1, bytes.size()));
    checkEncodings(bytes);
    checkSeen(bytes);
    checkCuts(bytes);
    checkPieces(rest, first.empty() ? " " : first);
    if (isOneLine(first)) {
        checkTelnet(first);
    }
    checkLog(bytes);
    checkFilter(first, rest);
    if (isValidUtf8(bytes)) {
        require(matchesPattern(rest, first) == matchesByTable(rest, first), "a pattern means what it says");
    }
    const Settings masking{.mask_passwords = true};
    const std::string masked = shownCommand(first, masking);
    require(shownCommand(masked, masking) == masked, "what is masked is masked");
    require(!toUpper(first).starts_with("PASS ") || trim(first.substr(4)).empty() ||
                masked.substr(4) == " *****",
            "no password of a login is shown");
}

void work(std::string_view bytes) {
    checkEncodings(bytes);
    checkSeen(bytes);
    checkCuts(bytes);
    checkPieces(bytes, " ");
    checkTelnet(replaceAll(replaceAll(bytes, "\r", ""), "\n", ""));
    checkLog(bytes);
    checkFilter("a b", bytes);
    matchesPattern(bytes, "*a#?*b");
}

} // namespace corvel::fuzz

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

inline constexpr std::string_view lineEnd = "\r\n";
inline constexpr std::string_view fieldSeparator = " | ";

// Empties text, and overwrites what stood in its memory: for a password that is not needed any more. Copies
// that were made of it stay.
void wipe(std::string& text);

// The pieces of text between the separators, left to right, at most most of them: the last piece keeps
// every further separator. An empty text gives one empty piece. The pieces point into text.
std::vector<std::string_view> split(std::string_view text, std::string_view separator,
                                    std::size_t most = std::string_view::npos);

// Cuts text at every fieldSeparator, as split does, into fields without an allocation. False, with fields in
// no particular state, when text has another number of fields than fields has room for.
bool cutFields(std::string_view text, std::span<std::string_view> fields);

// As cutFields, but the last field keeps every further separator: false only where text has fewer fields.
bool cutLeadingFields(std::string_view text, std::span<std::string_view> fields);

// The pieces with the separator between them.
std::string join(const std::vector<std::string_view>& pieces, std::string_view separator);

// text with every occurrence of what replaced, left to right; the replacement is not searched again.
// An empty what changes nothing.
std::string replaceAll(std::string_view text, std::string_view what, std::string_view replacement);

// text without its leading (and trailing) blanks. Only the blank counts, as the entry lines want it.
std::string_view trimLeading(std::string_view text);
std::string_view trim(std::string_view text);

// "1 command", "2 commands": a count with its noun, which makes the plural with an s.
std::string counted(std::size_t count, std::string_view noun);

// character, of A-Z as a-z.
constexpr char lowerAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

// text with A-Z (a-z) replaced by the other case; every other byte stays.
std::string toLower(std::string_view text);
std::string toUpper(std::string_view text);

// text, UTF-8, in the form in which two texts that differ only in case are equal: ASCII, Latin, Greek and
// Cyrillic letters are folded, every other byte stays. Made for ordering lists, not for display.
std::string foldCase(std::string_view text);

// Appends bytes of a server to text as UTF-8, in the form that foldCase gives.
void appendFolded(std::string& text, std::string_view bytes);

// The eight bytes of text from place on, with zeros behind its end, as a number that orders as they do.
std::uint64_t eightBytes(std::string_view text, std::size_t place);

// Whether text can go out as one line of a control connection: no CR, LF or NUL in it (RFC 959, section 5.3).
bool isOneLine(std::string_view text);

// Whether the whole of text matches pattern: "?" stands for one character (UTF-8; a byte where it is none),
// "*" for any run of bytes (the empty one and line ends included), "#" for one decimal digit, everything else
// for itself, case-sensitively. Costs at most text size times pattern size, without recursion.
bool matchesPattern(std::string_view text, std::string_view pattern);

// An entry of a list box in which several entries can be selected; the text is in the server's bytes.
struct SelectableEntry {
    std::string sText;
    bool bSelected = false;

    bool operator==(const SelectableEntry&) const = default;
};

// A name and the value that stands for it, both in the server's bytes. Names are compared without regard to
// the case of ASCII letters; of two variables with one name the first counts.
struct MenuVariable {
    std::string sName;
    std::string sValue;
};
using MenuVariables = std::vector<MenuVariable>;

// text with every placeholder "%(name,width,align,fill,cut)" replaced by the value of its variable; an
// unknown name counts as empty. A value is padded to width characters (code points where it is UTF-8, else
// bytes; 4096 at most) with the first character of fill, a blank where that is empty, and stands at the right
// for the align "R", in the centre for "C", else at the left. It is cut to width where cut is "1". The fill
// "$" takes it as a number of kilobytes and gives whole megabytes, halves rounded to even, padded with
// blanks. The first placeholder that is not closed or has nothing in it ends the expansion, the text from
// there on stays. Inserted values are not expanded again. Without any variables text comes back unchanged.
std::string ExpandTemplate(std::string_view text, const MenuVariables& variables);

// A part of an expanded template: as it is written there, or the value of a placeholder.
struct TemplatePiece {
    std::string text;
    bool isValue = false;
};

// The same in its parts, in their order.
std::vector<TemplatePiece> expandPieces(std::string_view text, const MenuVariables& variables);

} // namespace corvel

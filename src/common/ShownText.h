#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvel {

// Texts of a server are as long as it likes; these make of one what is shown. All texts are valid UTF-8, and
// all lengths characters (code points). What is acted on is always the whole text.

// The most of a name that stands within a text of the program's own: a title, a question, a caption.
inline constexpr std::size_t longestName = 100;
// The most of a line of text that is shown by itself, in a cell or a status line.
inline constexpr std::size_t longestLine = 500;

// text, or where it is longer than most its beginning and its end with a mark between them that says how much
// is left out: names that differ only at one end can still be told apart. It is no longer than most plus the
// mark.
std::string shortened(std::string_view text, std::size_t most);

// What stands behind the beginning of a line in place of so many characters: " ... (59,000 more characters)".
std::string moreMark(std::size_t characters);

// text with line feeds put in where one of its lines is longer than longest: at the last blank before, which
// goes, or where there is none right there.
std::string wrapped(std::string_view text, std::size_t longest);

// A name, or a line such as a reply, in a server's bytes, for a person to see within a text of the program's.
std::string shownName(std::string_view name);
std::string shownLine(std::string_view line);

} // namespace corvel

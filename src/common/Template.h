#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// A name and the value that stands for it, both in the server's bytes. Names are compared without regard to
// the case of ASCII letters; of two variables with one name the first counts.
struct MenuVariable {
    std::string sName;
    std::string sValue;
};
using MenuVariables = std::vector<MenuVariable>;

enum class FieldAlign { left, right, centre };

// No field is padded or cut to more characters than this, however wide it is asked to be.
inline constexpr std::size_t widestField = 4096;

// text with every placeholder "%(name,width,align,fill,cut)" replaced by the value of its variable in that
// format; an unknown name counts as empty. The first placeholder that is not closed or has nothing in it ends
// the expansion, the text from there on stays. Inserted values are not expanded again. Without any variables
// text comes back unchanged.
std::string ExpandTemplate(std::string_view text, const MenuVariables& variables);

// value padded to width characters with the first character of fill (a blank where fill is empty), and cut to
// width where cut is set. The fill "$" takes value as a number of kilobytes and gives whole megabytes, halves
// rounded to even, padded with blanks. Characters are code points where the text is UTF-8, else bytes.
std::string FormatField(std::string_view value, std::size_t width, FieldAlign align, std::string_view fill,
                        bool cut);

} // namespace corvel

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

// text with every placeholder "%(name,width,align,fill,cut)" replaced by the value of its variable; an
// unknown name counts as empty. A value is padded to width characters (code points where it is UTF-8, else
// bytes; 4096 at most) with the first character of fill, a blank where that is empty, and stands at the right
// for the align "R", in the centre for "C", else at the left. It is cut to width where cut is "1". The fill
// "$" takes it as a number of kilobytes and gives whole megabytes, halves rounded to even, padded with
// blanks. The first placeholder that is not closed or has nothing in it ends the expansion, the text from
// there on stays. Inserted values are not expanded again. Without any variables text comes back unchanged.
std::string ExpandTemplate(std::string_view text, const MenuVariables& variables);

} // namespace corvel

#pragma once

#include <string_view>

namespace corvel {

// Whether the whole of text matches pattern: "?" stands for one character (UTF-8; a byte where it is none),
// "*" for any run of bytes (the empty one and line ends included), "#" for one decimal digit, everything else
// for itself, case-sensitively. Costs at most text size times pattern size, without recursion.
bool matchesPattern(std::string_view text, std::string_view pattern);

} // namespace corvel

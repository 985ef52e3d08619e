#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// The directory above directory: without its last piece, "/" when nothing is left.
std::string parentDirectory(std::string_view directory);

// The directory that a double click leads to from the current one: a row's name and access as listed, all
// in the server's bytes. A link leads to its target as listed, which may be relative; the server's answer
// to the PWD that follows corrects that. Nothing for a file, for ".", for ".." at the root and for a link
// whose target is listed as empty. Whether the result can be sent at all is for the sender to see.
std::optional<std::string> navigationTarget(std::string_view current, std::string_view name,
                                            std::string_view access);

// name in directory: with one "/" between them.
std::string pathIn(std::string_view directory, std::string_view name);

} // namespace corvel

#pragma once

#include "demo/DemoTree.h"

#include <functional>
#include <string>

namespace corvel {

// The ten characters that open a listing line, such as "drwxr-xr-x".
std::string accessText(const TreeNode& node);

// One long-format listing line for node under the given name, without line end: access, link count, owner,
// group, size and date with exactly one blank between the date's fields, then the name, and a link's target
// behind " -> ". The columns are padded in front of the link count, behind owner and group and in front of
// the size.
std::string listingLine(const TreeNode& node, std::string_view name);

// Which hidden directories are shown.
using ListingFilter = std::function<bool(const TreeNode&)>;

// The lines for a directory's content, each ended by CR LF: "." and ".." first, then the children by name.
// parent: what ".." stands for.
// withDots: also the names that begin with a dot, "." and ".." included. Children that the filter refuses
// are left out.
std::string directoryLines(const TreeNode& directory, const TreeNode& parent, bool withDots,
                           const ListingFilter& isShown);

} // namespace corvel

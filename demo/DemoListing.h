#pragma once

#include "demo/DemoAccounts.h"
#include "demo/DemoTree.h"

#include <functional>
#include <string>
#include <string_view>

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

// A hidden directory carries a text of words that says whom it is shown to: "-" and a user's name, "=" and a
// group's name, or letters and digits of which the user's flags must hold one. Its owner and master users see
// it always.

// Why the words say nothing that can be: no words at all, an unknown user or group, bad flags. Empty when
// they do.
Problem hidingProblem(const DemoAccounts& accounts, std::string_view hidingWords);

// Whether a listing for the user shows the directory.
bool isShownTo(const DemoAccounts& accounts, const DemoUser& user, const TreeNode& directory);

} // namespace corvel

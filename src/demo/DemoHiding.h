#pragma once

#include "demo/DemoAccounts.h"
#include "demo/DemoTree.h"

#include <string_view>

namespace corvel {

// A hidden directory carries a text of words that says whom it is shown to: "-" and a user's name, "=" and a
// group's name, or letters and digits of which the user's flags must hold one. Its owner and master users see
// it always.

// Why the words say nothing that can be: no words at all, an unknown user or group, bad flags. Empty when
// they do.
Problem hidingProblem(const DemoAccounts& accounts, std::string_view hidingWords);

// Whether a listing for the user shows the directory.
bool isShownTo(const DemoAccounts& accounts, const DemoUser& user, const TreeNode& directory);

} // namespace corvel

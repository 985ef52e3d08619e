#pragma once

#include "browser/Listing.h"
#include "common/Command.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

inline constexpr std::size_t permissionCount = 9;

// Whether each permission is given: read, write and execute for the owner, then for the group, then for the
// others.
using Permissions = std::array<bool, permissionCount>;

// The dialog frmBrowserCHMOD.
struct ChmodForm {
    std::string txtPath; // of the entry, from the root, in the server's bytes
    Permissions chkX = {};
    std::string txtCHMODval; // the mode in octal digits
};

// The form for an entry of directory cwd, its path and access as listed.
ChmodForm chmodForm(std::string_view cwd, const BrowserEntry& entry);

// The permissions as three octal digits, behind the first digit of mode where that is one of four.
std::string chmodValue(const Permissions& permissions, std::string_view mode = {});

// The permissions in a typed mode of three octal digits, or of four, whose first does not stand for any of
// them; nothing for another text.
std::optional<Permissions> permissionsOf(std::string_view value);

// Sets the mode (SITE CHMOD, with an octal mode and a path).
Command chmodCommand(const ChmodForm& form);

} // namespace corvel

#pragma once

#include "browser/Listing.h"
#include "common/Command.h"
#include "common/Text.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The dialog frmBrowserCHATTR: to whom a directory is shown that is hidden from all others. All texts are in
// the server's bytes.
struct ChattrForm {
    std::string sName;      // of the directory, in the current one
    std::string txtCurrent; // whom it is shown to now, as the server says it
    bool isRefused = false; // the server does not say it; txtCurrent is its refusal
    bool chkFlags = false;  // whether txtFlags counts
    std::string txtFlags;
    std::vector<SelectableEntry> lstUsers;
    std::vector<SelectableEntry> lstGroups;
};

// The answer to a question of chattrQuery, kept with the question because another one may be open by then.
struct ChattrAnswer {
    std::string sQuery;
    std::string txtCurrent;
    bool isRefused = false; // as in ChattrForm
};

// Asks to whom a directory is shown.
Command chattrQuery(std::string_view name);

// What the dialog shows of the first line of the reply: what is behind "200-CHATTR: ", else the whole line.
std::string_view chattrText(std::string_view firstLine);

// Whether the confirmed form would clear what nobody has seen: nothing is selected, and the server does not
// say what is set.
bool clearsUnseen(const ChattrForm& form);

// What the confirmed form sends: who is to see the directory, or, where nothing is selected, that everybody
// is. Nothing where nothing is selected and nothing was set.
std::vector<Command> chattrCommands(const ChattrForm& form);

inline constexpr std::size_t permissionCount = 9;

// Whether each permission is given: read, write and execute for the owner, then for the group, then for the
// others.
using Permissions = std::array<bool, permissionCount>;

// The dialog frmBrowserCHMOD.
struct ChmodForm {
    std::string txtPath; // of the entry, from the root, in the server's bytes
    Permissions chkX = {};
    std::string txtCHMODval; // the mode in octal digits
    // Of several entries at once, in place of txtPath: their paths, and their names as a person reads them.
    std::vector<std::string> paths = {};
    std::string names = {};
    std::string modeOf = {}; // where their permissions differ, the name of the one that these are of; UTF-8
};

// The form for an entry of directory cwd, its path and access as listed.
ChmodForm chmodForm(std::string_view cwd, const BrowserEntry& entry);

// The form for several entries, one at least; the permissions are those of the first.
ChmodForm chmodForm(std::string_view cwd, const std::vector<const BrowserEntry*>& entries, std::string names);

// The permissions as three octal digits, behind the first digit of mode where that is one of four.
std::string chmodValue(const Permissions& permissions, std::string_view mode = {});

// The permissions in a typed mode of three octal digits, or of four, whose first does not stand for any of
// them; nothing for another text.
std::optional<Permissions> permissionsOf(std::string_view value);

// Sets the mode (SITE CHMOD, with an octal mode and a path).
std::vector<Command> chmodCommands(const ChmodForm& form);

// The dialog frmBrowserNUKE. All texts are in the server's bytes.
struct NukeForm {
    std::string txtPath;   // the directory in which the release is, for the person to see
    std::string txtName;   // of the release
    std::string txtMultip; // by how much the uploader is punished, as the server reads it
    std::string txtReason;
};

// How a server wants to be asked, as the settings say it, in the server's bytes.
struct NukeSyntax {
    std::string site_nuke_syntax;         // a template with name, mult and reason
    std::string site_nuke_replace_spaces; // stands for each blank of the reason
};

// What the confirmed form sends; its text is empty where the template is.
Command nukeCommand(const NukeForm& form, const NukeSyntax& syntax);

} // namespace corvel

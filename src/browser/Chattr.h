#pragma once

#include "common/Command.h"
#include "common/SelectableEntry.h"

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

} // namespace corvel

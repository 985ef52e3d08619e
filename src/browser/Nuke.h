#pragma once

#include "common/Command.h"

#include <string>
#include <string_view>

namespace corvel {

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

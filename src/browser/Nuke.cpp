#include "browser/Nuke.h"

#include "browser/FileOperations.h"
#include "common/Template.h"
#include "common/Text.h"

namespace corvel {

Command nukeCommand(const NukeForm& form, const NukeSyntax& syntax) {
    return fileCommand(
        ExpandTemplate(syntax.site_nuke_syntax,
                       {{"name", form.txtName},
                        {"mult", form.txtMultip},
                        {"reason", replaceAll(form.txtReason, " ", syntax.site_nuke_replace_spaces)}}),
        "");
}

} // namespace corvel

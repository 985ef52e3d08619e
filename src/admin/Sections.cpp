#include "admin/Sections.h"

#include "admin/TableCommands.h"
#include "common/Numbers.h"

#include <cstddef>

namespace corvel {

SectionsForm sectionsForm(std::span<const UserSectionRow> rows) {
    SectionsForm form;
    for (const UserSectionRow& row : rows) {
        form.lbl.push_back(row.sSection);
        form.txtRatio.push_back(row.sRatio);
        form.txtCredits.push_back(row.sCredits);
    }
    return form;
}

std::vector<Command> saveSectionsCommands(const clsUser& user, std::span<const UserSectionRow> rows,
                                          const SectionsForm& form) {
    std::vector<Command> commands;
    const std::string change = "SITE change " + user.sName + " ";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (form.txtRatio[i] != rows[i].sRatio) {
            commands.push_back(
                userChange(change + "ratio " + wholeNumberText(form.txtRatio[i]) + " " + rows[i].sSection));
        }
        if (form.txtCredits[i] != rows[i].sCredits) {
            commands.push_back(userChange(change + "credits " + creditsOfMegabytes(form.txtCredits[i]) + " " +
                                          rows[i].sSection));
        }
    }
    return commands;
}

} // namespace corvel

#pragma once

#include "admin/UserEditor.h"
#include "common/Command.h"

#include <span>
#include <string>
#include <vector>

namespace corvel {

// The dialog frmUserSections: element i of each control array belongs to row i of lvwUserSections.
struct SectionsForm {
    std::vector<std::string> lbl;
    std::vector<std::string> txtRatio;
    std::vector<std::string> txtCredits; // megabytes
};

SectionsForm sectionsForm(std::span<const UserSectionRow> rows);

// What Save sends for user: for each row a command for a ratio and for credits whose text changed. form has
// an element for each row.
std::vector<Command> saveSectionsCommands(const clsUser& user, std::span<const UserSectionRow> rows,
                                          const SectionsForm& form);

} // namespace corvel

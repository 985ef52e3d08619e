#pragma once

#include "admin/UserForm.h"
#include "app/mdlMain.h"

class QWidget;

namespace corvel {

// Open the dialogs that change an account, modal to parent; each returns at once and sends what its dialog is
// confirmed with. program: borrowed, must outlive the dialog. index: of the account in the site's table.
void openUserGroups(mdlMain& program, int site, int index, QWidget* parent);
// shown: the account as the editor shows it.
void openUserSections(mdlMain& program, int site, int index, const UserForm& shown, QWidget* parent);

} // namespace corvel

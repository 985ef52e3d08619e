#pragma once

#include "app/mdlMain.h"

class QWidget;

namespace corvel {

// Open the dialogs that make and change accounts and groups on a site, and send what they collect there, even
// where another site is the current one by then. All return at once; parent's window waits for the dialog,
// which deletes itself. program must outlive parent. user: a record of the site's table, whose details the
// last two show.
void openAddUser(mdlMain& program, int site, QWidget* parent);
void openAddGroup(mdlMain& program, int site, QWidget* parent);
void openCopyUser(mdlMain& program, int site, const clsUser& user, QWidget* parent);
void openUserGroups(mdlMain& program, int site, const clsUser& user, QWidget* parent);
void openUserSections(mdlMain& program, int site, const clsUser& user, QWidget* parent);

} // namespace corvel

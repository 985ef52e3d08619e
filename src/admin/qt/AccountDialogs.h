#pragma once

#include "app/mdlMain.h"

class QWidget;

namespace corvel {

// Open the dialogs that make accounts and groups on a site, and send what they collect there, even where
// another site is the current one by then. All return at once; parent's window waits for the dialog, which
// deletes itself. program must outlive parent.
void openAddUser(mdlMain& program, int site, QWidget* parent);
void openAddGroup(mdlMain& program, int site, QWidget* parent);

// Copies the record at index in the site's user table; an index that is not there does nothing.
void openCopyUser(mdlMain& program, int site, int index, QWidget* parent);

} // namespace corvel

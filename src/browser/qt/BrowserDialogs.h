#pragma once

#include "app/mdlMain.h"

namespace corvel {

class BrowserPanel;

// Open the dialogs for the entry in a display row of a site's browser, and send to that site what they are
// confirmed with, whatever the list shows by then. All return at once; the window waits for the dialog, which
// deletes itself. A row that is not there opens nothing. program must outlive panel.
void openChmod(mdlMain& program, int site, int row, BrowserPanel& panel);
void openNuke(mdlMain& program, int site, int row, BrowserPanel& panel);

// Waits for the answer to a chattrQuery about the row, which the caller sends. Opens nothing for other rows
// than directories.
void openChattr(mdlMain& program, int site, int row, BrowserPanel& panel);

} // namespace corvel

#pragma once

#include "app/mdlMain.h"

#include <vector>

namespace corvel {

class BrowserPanel;

// Opens one of the dialogs of the browser (frmBrowserCHMOD, frmBrowserNUKE, frmBrowserCHATTR) for the entry
// in a display row of a site's list, and sends to that site what it is confirmed with, whatever the list
// shows by then. Returns at once; the window waits for the dialog, which deletes itself. A row that is not
// there opens nothing. CHATTR opens for directories alone, and waits for the answer to a chattrQuery about
// the row, which the caller sends. program must outlive panel.
void openBrowserDialog(mdlMain& program, int site, Dialog dialog, int row, BrowserPanel& panel);

// The same with frmBrowserCHMOD for several rows at once, links and ".." aside; without another among them,
// none opens.
void openChmodDialog(mdlMain& program, int site, const std::vector<int>& rows, BrowserPanel& panel);

} // namespace corvel

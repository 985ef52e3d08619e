#pragma once

#include "app/mdlMain.h"
#include "widgets/LogBox.h"
#include "widgets/SitePages.h"

class QLineEdit;

namespace corvel {

// A site's page with one of its logs.
struct LogPage {
    QWidget* widget = nullptr;
    LogBox* log = nullptr;
    QLineEdit* command = nullptr; // in the console alone
};

// The pages of a tab that shows a log of every site.
class LogPages : public SitePages<LogPage> {
  public:
    using SitePages<LogPage>::SitePages;

    void logChanged(int site) {
        if (const LogPage* const page = find(site)) {
            page->log->scheduleUpdate();
        }
    }
};

// The console tab: for every site its log txtLogFTP, in the font that settings.ini names, and its command
// line txtSendFTP. program: borrowed, must outlive the pages.
LogPages* newConsolePanel(mdlMain& program);

// The command-results tab: for every site its log txtCmdResults.
LogPages* newResultsPanel(mdlMain& program);

} // namespace corvel

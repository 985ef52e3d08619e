#pragma once

#include "app/mdlMain.h"
#include "widgets/LogBox.h"
#include "widgets/SitePages.h"

#include <QWidget>

#include <functional>

class QLineEdit;

namespace corvel {

class LogTools;

// A site's page with one of its logs.
struct LogPage {
    QWidget* widget = nullptr;
    LogBox* log = nullptr;
    QLineEdit* command = nullptr; // in the console alone
};

// A tab that shows a log of every site, with the tools for it below.
class LogPanel : public QWidget {
    Q_OBJECT

  public:
    explicit LogPanel(std::function<LogPage(int site)> makePage);

    void showSite(int site) { pages_->showSite(site); }
    // The site's page, made now if need be.
    LogPage& at(int site) { return pages_->at(site); }
    void logChanged(int site);
    void drop(int site) { pages_->drop(site); }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    SitePages<LogPage>* pages_;
    LogTools* tools_ = nullptr; // from when the tab is first in sight
};

// The console tab: for every site its log txtLogFTP, in the font that settings.ini names, and its command
// line txtSendFTP with the commands typed there before. program: borrowed, must outlive the pages.
LogPanel* newConsolePanel(mdlMain& program);

// The command-results tab: for every site its log txtCmdResults.
LogPanel* newResultsPanel(mdlMain& program);

} // namespace corvel

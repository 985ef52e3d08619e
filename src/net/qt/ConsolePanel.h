#pragma once

#include "app/mdlMain.h"

#include <QStackedWidget>

#include <vector>

class QLineEdit;

namespace corvel {

class LogBox;

// Pages of which each belongs to a site, by its number, and shows one of its logs. Page 0 is empty.
class LogPages : public QStackedWidget {
    Q_OBJECT

  public:
    void showSite(int site) { setCurrentIndex(site); }
    void logChanged(int site);

  protected:
    using SessionLog = LogText SiteSession::*;

    // program: borrowed, must outlive the pages.
    LogPages(mdlMain& program, QWidget* parent);

    // A box for a log of the site, called name and the site's number; the caller puts it on the site's page.
    LogBox* createLogBox(int site, SessionLog log, const char* name, const QString& accessibleName);

    mdlMain& program_;

  private:
    std::vector<LogBox*> boxes_; // element 0 belongs to no site
};

// The console tab: for every site its log txtLogFTP and its command line txtSendFTP.
class ConsolePanel : public LogPages {
    Q_OBJECT

  public:
    explicit ConsolePanel(mdlMain& program, QWidget* parent = nullptr) : LogPages(program, parent) {}

    // The log's font is the one that settings.ini names, if any.
    void addSite(int site);

    // The site's command line.
    QLineEdit& txtSendFTP(int site) { return *commandLines_[static_cast<std::size_t>(site)]; }

  private:
    QLineEdit* createCommandLine(int site);

    std::vector<QLineEdit*> commandLines_{nullptr}; // element 0 belongs to no site
};

// The command-results tab: for every site its log txtCmdResults.
class ResultsPanel : public LogPages {
    Q_OBJECT

  public:
    explicit ResultsPanel(mdlMain& program, QWidget* parent = nullptr) : LogPages(program, parent) {}

    void addSite(int site);
};

} // namespace corvel

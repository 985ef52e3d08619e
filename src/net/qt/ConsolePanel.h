#pragma once

#include "app/mdlMain.h"

#include <QStackedWidget>

#include <vector>

namespace corvel {

class LogBox;

// The console tab: for every site its log txtLogFTP and its command line txtSendFTP. Page i belongs to site
// i.
class ConsolePanel : public QStackedWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit ConsolePanel(mdlMain& program, QWidget* parent = nullptr);

    // The font is the one that settings.ini names, if any.
    void addSite(int site);
    void showSite(int site) { setCurrentIndex(site); }
    void logChanged(int site);

  private:
    mdlMain& program_;
    std::vector<LogBox*> logs_;
};

// The command-results tab: for every site its log txtCmdResults. Page i belongs to site i.
class ResultsPanel : public QStackedWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit ResultsPanel(mdlMain& program, QWidget* parent = nullptr);

    void addSite(int site);
    void showSite(int site) { setCurrentIndex(site); }
    void logChanged(int site);

  private:
    mdlMain& program_;
    std::vector<LogBox*> logs_;
};

} // namespace corvel

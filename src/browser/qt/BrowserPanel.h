#pragma once

#include "app/mdlMain.h"

#include <QWidget>

#include <vector>

class QLabel;
class QLineEdit;
class QStackedWidget;

namespace corvel {

class LogBox;
class ReportView;

// The browser tab: the buttons and counters, and for every site its list lvwBrowser, its path txtBrowserPWD
// and the server's replies txtBrowserCmdReply.
class BrowserPanel : public QWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit BrowserPanel(mdlMain& program, QWidget* parent = nullptr);

    void addSite(int site);
    void showSite(int site);
    void logChanged(int site);
    void listingChanged(int site);
    void pathChanged(int site);

    // Writes the current site's counts where they differ from what is shown.
    void showCounts();

    // Opens a dialog of the browser for the row that is selected in the site's list; without one, none opens.
    void openDialog(int site, Dialog dialog);

  signals:
    // The session has an answer to a question about a directory.
    void chattrAnswered(int site);
    // The current site's list wants its pop-up menu, at a place on screen.
    void menuRequested(const QPoint& globalPosition);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Page {
        ReportView* list = nullptr;
        QLineEdit* path = nullptr;
        LogBox* replies = nullptr;
    };

    QWidget* createButtons();
    ReportView* createList(int site);
    void keyPressed(int site, int key, int row);
    const Page& page(int site) const { return pages_[static_cast<std::size_t>(site)]; }

    mdlMain& program_;
    std::vector<Page> pages_; // element 0 belongs to no site
    QStackedWidget* stack_ = nullptr;
    QLabel* directoryCount_ = nullptr;
    QLabel* fileCount_ = nullptr;
};

} // namespace corvel

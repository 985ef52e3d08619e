#pragma once

#include "app/mdlMain.h"
#include "widgets/SitePages.h"

#include <QWidget>

#include <cstdint>

class QLabel;
class QLineEdit;

namespace corvel {

class LogBox;
class LogTools;
class ReportView;

// The browser tab: the buttons and counters, and for every site its list lvwBrowser, its path txtBrowserPWD
// and the server's replies txtBrowserCmdReply.
class BrowserPanel : public QWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit BrowserPanel(mdlMain& program, QWidget* parent = nullptr);

    void showSite(int site);
    void dropSite(int site) { pages_->drop(site); }
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
    void showEvent(QShowEvent* event) override;

  private:
    struct Page {
        QWidget* widget = nullptr;
        ReportView* list = nullptr;
        QLineEdit* path = nullptr;
        LogBox* replies = nullptr;
        std::uint64_t shownListing = 0; // by its number
        int firstRow = 0;               // in sight, before the list was emptied for a listing to be ordered
    };

    QWidget* createButtons();
    Page createPage(int site);
    ReportView* createList(int site);
    void showListing(Page& page, int site);
    static void showOrder(const Page& page, const RemoteList& rows);
    void keyPressed(int site, int key, int row);

    mdlMain& program_;
    SitePages<Page>* pages_ = nullptr;
    LogTools* tools_ = nullptr; // from when the tab is first in sight
    QLabel* directoryCount_ = nullptr;
    QLabel* fileCount_ = nullptr;
};

} // namespace corvel

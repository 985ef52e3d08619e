#pragma once

#include "app/mdlMain.h"
#include "widgets/SitePages.h"

#include <QWidget>

#include <cstdint>
#include <vector>

class QAction;
class QHBoxLayout;
class QLabel;
class QLayout;
class QMenu;
class QToolButton;

namespace corvel {

class BytesEdit;
class LogBox;
class LogTools;
class NoticeBar;
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

    // Puts into menu what can be done in the browser; the actions belong to the panel. What cannot be done
    // now is disabled, and its tip says why.
    void fillMenu(QMenu& menu);

    // Opens a dialog of the browser for the row that is selected in the site's list; without one, none opens.
    void openDialog(int site, Dialog dialog);

  signals:
    // The session has an answer to a question about a directory.
    void chattrAnswered(int site);
    // The current site's list wants its pop-up menu, at a place on screen.
    void menuRequested(const QPoint& globalPosition);
    // Text that the status bar is to show as long as it is not empty.
    void noteWanted(const QString& text);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    struct Page {
        QWidget* widget = nullptr;
        ReportView* list = nullptr;
        BytesEdit* path = nullptr;
        LogBox* replies = nullptr;
        bool isPathTyped = false;         // and not sent
        std::vector<std::uint32_t> order; // of the rows as they are shown
        std::uint64_t shownVisit = 0;     // by its number, as the next
        std::uint64_t shownListing = 0;
        int firstRow = 0; // in sight, before the list was emptied for a listing to be ordered
    };

    QWidget* createButtons();
    void addNotes(QLayout& layout);
    void addCounts(QHBoxLayout& layout);
    BytesEdit* createPath(int site);
    void setPathTyped(int site, bool isTyped);
    void showPath(Page& page, int site);
    Page createPage(int site);
    ReportView* createList(int site);
    void arrangeInTurns(int site);
    void showListing(Page& page, int site);
    static void showOrder(Page& page, const RemoteList& rows);
    void showState();
    void showPadding(bool isWanted);
    void openStrangeLines();
    QString whyNot(BrowserAct act, const std::vector<int>& rows) const;
    std::vector<int> selectedRows() const; // of the current site
    void act(BrowserAct act);
    void showActions();
    void keyPressed(int site, int key, int row);

    mdlMain& program_;
    SitePages<Page>* pages_ = nullptr;
    LogTools* tools_ = nullptr; // from when the tab is first in sight
    QLabel* directoryCount_ = nullptr;
    QLabel* fileCount_ = nullptr;
    QLabel* changed_ = nullptr;
    QToolButton* strange_ = nullptr;
    NoticeBar* padding_ = nullptr;  // made when it is first wanted
    std::vector<QAction*> actions_; // by the numbers of BrowserAct
    QString note_;
};

} // namespace corvel

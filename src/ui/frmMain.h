#pragma once

#include "admin/qt/GroupsPanel.h"
#include "admin/qt/UsersPanel.h"
#include "app/mdlMain.h"
#include "app/WindowPlacement.h"
#include "browser/qt/BrowserPanel.h"
#include "menus/qt/CustomMenus.h"
#include "net/qt/ActivityPanel.h"
#include "net/qt/ConsolePanel.h"
#include "net/qt/SitesList.h"
#include "net/qt/StatsPanel.h"
#include "ui/desktop/mdlTrayIcon.h"
#include "ui/desktop/SystemPorts.h"
#include "ui/ViewUpdates.h"
#include "widgets/ImageLists.h"
#include "widgets/WindowPrompts.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

class QAction;
class QTabWidget;
class QTimer;

namespace corvel {

class FrontDoor;
class NoticeBar;
class SettingsPanel;
class StartPage;
class QueueDialog;
class StatusLine;

// The main window: the sites list, the bar beside it, the tabs, the menus and the status bar. It shows
// mdlMain and hands it everything that happens.
class frmMain : public QMainWindow {
    Q_OBJECT

  public:
    // store: where the state lives between runs; borrowed, must outlive the window. directory: of sites.ini
    // and settings.ini, UTF-8. Nothing is read before start().
    frmMain(StateStore& store, const std::string& directory);
    ~frmMain() override;

    // Reads state, settings and sites, shows the window and connects the sites that are marked for it.
    void start();

    mdlMain& program() { return program_; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::unique_ptr<Socket> makeSocket(int site);
    void createMenus();
    void createSitesMenu();
    void createViewMenu();
    void showImages();
    bool asksAboutBatch();
    void createArea();
    void createPanels();
    void createSettingsPanel();
    void createStatusBar();
    // A timer of a site, not started yet.
    QTimer& addTimer(const char* name, int site, int interval, std::function<void()> tick);
    void createPopup();
    void sitesMenuTriggered(int index);
    void editSite(int site); // 0: a new one
    void openAddDialog(const SiteForm& form);
    void dropSite(int site);
    // Shows in menus and tabs which sites there are.
    void showSites();
    void listSites(std::size_t most);
    void showStartPage();
    void openGuide();
    void startDemo();
    void toggleSitesView();
    void showSitesList(bool visible);
    void createHelpMenu();
    void openSettings();
    void openCertificate(int site);
    void openAboutBox();
    void showChange(const ViewChange& change);
    void openDialog(int site, Dialog dialog);
    void showAddedSite(int site);
    void showCurrentSite();
    void showLog(int site, LogKind log);
    std::vector<AccountsPanel*> accountsPanels() const; // those that are made
    UsersPanel& users();
    template <typename Panel>
    Panel& madePanel(Panel*& panel, QWidget& tab, MenuKind menu);
    void layoutWindow();
    void rememberGeometry();
    void placeWindow();
    void applyWindowState();
    void gatherWindowState();
    bool dragSplitter(const QEvent& event);
    void tmrSocketStatus_Timer();
    void createClosedBar();
    void showClosed();
    void showJobs(int site);
    void showLastError(int site);
    void openQueue();
    void showUnread();
    void showActivity();
    void createTray();
    // In a bar on top: that the folder of the files is not this window's, or what was not saved in it.
    void showFolderNotice();
    void showReadableNotice();
    NoticeBar& noticeBar();
    void useUserFolder();
    void showProblems(const std::vector<std::string>& problems);

    ViewUpdates views_;
    WindowPrompts prompts_;
    QtClock clock_;
    DesktopShell shell_;
    LockFile lock_;
    mdlMain program_;
    CustomMenus customMenus_;

    ImageLists images_;
    SitesList* lvwSites_ = nullptr;
    NoticeBar* closed_ = nullptr;       // where the current site is not connected
    NoticeBar* notice_ = nullptr;       // with something that a person should know and nothing waits for
    NoticeBar* folderNotice_ = nullptr; // made when it has something to say
    std::unique_ptr<FrontDoor> door_;   // for other copies of the program on the same folder
    QWidget* area_ = nullptr;           // what layoutWindow lays out
    QWidget* imgSplit_ = nullptr;
    QTabWidget* tabMain_ = nullptr;
    QMenu* mnuListSites_ = nullptr;   // the sites list's own
    QMenu* sitesMenu_ = nullptr;      // of the menu bar
    std::vector<QAction*> siteNames_; // in it, a site each; more than there are sites where some went
    QAction* sitesEnd_ = nullptr;     // behind them
    std::vector<QAction*> needSite_;  // entries that act on the current site
    std::vector<QAction*> needSites_; // and those that act on all
    StartPage* startPage_ = nullptr;  // made when there is no site
    QAction* showSitesList_ = nullptr;
    LogPanel* console_ = nullptr;
    LogPanel* results_ = nullptr;
    ActivityPanel* activity_ = nullptr;
    BrowserPanel* browser_ = nullptr;
    // The two large panels are made when their tabs are first in front.
    QWidget* usersTab_ = nullptr;
    QWidget* groupsTab_ = nullptr;
    UsersPanel* users_ = nullptr;
    GroupsPanel* groups_ = nullptr;
    StatsPanel* stats_ = nullptr;
    SettingsPanel* settings_ = nullptr;
    StatusLine* status_ = nullptr;
    QPointer<QueueDialog> queue_; // while it is open
    QTimer* tmrSocketStatus_ = nullptr;

    mdlTrayIcon tray_{this};
    std::optional<Status> shownStatus_;
    SplitterLayout splitter_;
    bool areSitesKnown_ = false;   // they are loaded
    bool isBatchGivenUp_ = false;  // a person closes the window though a batch runs
    bool isBatchAsked_ = false;    // the question about it is open
    bool isSavingTried_ = false;   // the sites, as the window was to close
    std::set<int> changedSockets_; // sites whose row is to be looked at by the next tick
};

} // namespace corvel

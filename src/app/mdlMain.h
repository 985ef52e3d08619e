#pragma once

#include "app/AdminActions.h"
#include "app/BrowserActions.h"
#include "app/MenuActions.h"
#include "app/Outbox.h"
#include "app/SitesKeeper.h"
#include "common/Ports.h"
#include "config/Settings.h"
#include "config/Sites.h"
#include "config/WindowState.h"
#include "net/CommandChannel.h"
#include "net/SiteSession.h"
#include "net/Statistics.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The table of every reply kind: code, echo, and what is done with the answer. A new kind is one entry here
// and one parser.
std::span<const ReplyHandler> replyHandlers();

// What the program needs from the outside world. Everything is borrowed and must outlive mdlMain.
struct Ports {
    Views& views;
    Prompts& prompts;
    StateStore& store;
    const Clock& clock;
    Shell& shell;
    FolderLock& lock; // on the directory
    SocketFactory makeSocket;
};

// The whole program without a window. Sites are numbered from 1; 0 means none. A window calls the start-up
// functions in the order in which they stand here, then hands over what happens: events of sockets and
// timers, and what a person does.
class mdlMain {
  public:
    // directory: where sites.ini and settings.ini live, UTF-8.
    mdlMain(Ports ports, std::string directory);
    // The parts hold references to each other.
    mdlMain(const mdlMain&) = delete;
    mdlMain& operator=(const mdlMain&) = delete;

    // Start-up. Each returns what was wrong with stored values and with files, one line each, for the person;
    // defaults stand in for them.
    std::vector<std::string> LoadWindowState();
    std::vector<std::string> LoadSettingsFile();
    std::vector<std::string> LoadSites(); // ends by connecting the sites that are marked for it

    // How the folder of the files is, and what to do about it. Whose it was when the sites were loaded; what
    // a copy of the program that crashed changed in the sites and did not save, as differenceText says it,
    // and whether it is to be so; and the sites in another file, with the reason where that fails.
    FolderHold folderHold() const { return sitesKeeper_.hold(); }
    std::string unsavedChanges() const;
    void takeUnsavedChanges();
    void leaveUnsavedChanges() { sitesKeeper_.leaveOffer(); }
    std::string writeSitesTo(const std::string& path) const;

    // Shut-down. SaveSites gives false when it tells or asks the person something. SaveWindowState stores
    // windowState() as it is then; its geometry must be that of the window in its normal state.
    bool SaveSites();
    void SaveWindowState();

    // Of sites.ini and settings.ini, UTF-8.
    const std::string& directory() const { return directory_; }
    WindowState& windowState() { return windowState_; }
    const Settings& settings() const { return settings_; }

    // The highest index of a site. Those that were removed keep theirs: of them nothing is to be asked for.
    int siteCount() const { return static_cast<int>(sites_.size()) - 1; }
    bool isThere(int site) const { return site > 0 && site <= siteCount() && !at(sites_, site).isRemoved; }
    // The indexes of the sites that are there, in their order.
    std::vector<int> siteIndexes() const;
    const Site& site(int index) const { return at(sites_, index); }
    int currentSite() const { return currentSite_; }
    Status status() const { return statusOf(sites_, currentSite_); }
    void selectSite(int site);
    // The row of a site's activity list that a person has selected, -1 for none. The list says so whenever it
    // becomes another one.
    void selectActivityRow(int site, int row) { at(sites_, site).session.activityRow = row; }

    // The sites menu. connectSite and disconnectSite do nothing for site 0; those for all leave a connection
    // alone that is there, or is not.
    void connectSite(int site);
    void disconnectSite(int site);
    void connectAll();
    void disconnectAll();
    // Takes a site out of the program, after a question that names what is lost with it.
    void removeSite(int site);
    // The fingerprint that is trusted for the site's host and port as they are configured; empty for none.
    std::string trustedFingerprint(int site) const;
    void forgetFingerprint(int site);
    // Both return the message for a form that is not valid, and then change nothing. A site that is added is
    // connected where the form says so.
    std::optional<std::string> addSite(const SiteForm& form);
    std::optional<std::string> changeSite(int site, const SiteForm& form);

    // Events of a site's socket and keep-alive timer.
    void wSock_Connect(int site);
    void wSock_Encrypted(int site);
    // problems: what is wrong with the server's certificate; sentences, UTF-8.
    void wSock_Certificate(int site, std::vector<std::string> problems);
    void wSock_DataArrival(int site, std::string_view bytes);
    void wSock_Close(int site);
    void wSock_Error(int site, std::string_view description, int number);
    void tmrNoop_Timer(int site);

    // The tick of a site's activity timer: asks who is online unless the list is frozen, nobody is logged in
    // or anything is outstanding or waits.
    void tmrRefreshWho_Timer(int site, bool chkFreezeRefresh);

    // Asks once who is online, as a person wants it.
    void askWho(int site);

    // A line of the console's command box, in the connection's encoding. An empty one sends the next command
    // that waits, should there be one.
    void sendConsoleCommand(int site, const std::string& command);

    // Empties a log of the site.
    void clearLog(int site, LogKind log) { log_.clear(site, log); }
    // The site's command results are in sight.
    void markResultsRead(int site) { at(sites_, site).session.commandResultsLog.markRead(); }

    // A round of the load test: the same for a command that the test sends, but only while no command waits
    // on the site, so that everybody else's get their turn. False when it was not sent.
    bool sendTestCommand(int site, const std::string& command);

    // The jobs of every site: what runs, waits and was.
    Outbox& outbox() { return outbox_; }
    BrowserActions& browser() { return browser_; }
    AdminActions& admin() { return admin_; }
    MenuActions& menus() { return menus_; }

  private:
    bool isAtRest(int site) const;
    void answerCertificate(const CertificateQuestion& question, CertificateAnswer answer);
    std::vector<SiteConfig> siteConfigs() const;
    SitesDifference unsavedDifference() const;
    void keepSites();
    void appendSite(const SiteConfig& config);
    void forgetSite(int site);

    Ports ports_;
    std::string directory_;
    WindowState windowState_;
    Settings settings_;
    SitesKeeper sitesKeeper_;
    Sites sites_;
    int currentSite_ = 0;

    ConsoleLog log_;
    CommandChannel channel_;
    Outbox outbox_;
    BrowserActions browser_;
    AdminActions admin_;
    MenuActions menus_;
};

} // namespace corvel

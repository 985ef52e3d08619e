#pragma once

namespace corvel {

// The three text logs of a site.
enum class LogKind { console, commandResults, browserReply };

// The dialogs that open when the core says so: an entry of a custom menu asks for them, or the server has
// sent what they need.
enum class Dialog { chmod, chattr, nuke, copyUser, userGroups };

// The two tables of a site.
enum class Accounts { users, groups };

// What has changed about a table: its records; what one of them shows in its row; the order of the rows;
// which of them are marked; what its editor shows. The first two concern the editors of both tables too.
enum class AccountChange { table, record, order, marks, editor };

// What of a site has changed.
enum class ViewPart {
    added,
    renamed,
    current, // another site is the current one; of no site
    log,
    // The browser's rows, their order, the counts, or whether anything can be done with them. Where the rows
    // are not arranged, the window has them arranged when it finds the time.
    listing,
    path,     // the browser's path box
    activity, // who is online, and the counters of it
    chattr,   // to whom a directory is shown
    accounts,
    session,  // the connection has ended; tables and activity are empty
    lastError // what the server refused last
};

struct ViewChange {
    ViewPart part = ViewPart::added;
    int site = 0;
    LogKind log = LogKind::console;      // of the part log
    Accounts accounts = Accounts::users; // this and the next: of the part accounts
    AccountChange account = AccountChange::table;

    bool operator==(const ViewChange&) const = default;
};

// What the core tells the window: that something has changed. The window reads the new state from mdlMain
// when it next shows it. Calls are cheap and may be frequent: an implementation gathers them and shows each
// once per turn of the event loop.
class Views {
  public:
    virtual ~Views() = default;

    virtual void changed(const ViewChange& change) = 0;
    // A dialog is to open for the row selected in the site's list: the users for the last two, else the
    // browser. Without one, none opens.
    virtual void dialogWanted(int site, Dialog dialog) = 0;

    // The changes by their names. Sites count from 1.
    void siteAdded(int site) { changed({.part = ViewPart::added, .site = site}); }
    void siteRenamed(int site) { changed({.part = ViewPart::renamed, .site = site}); }
    void currentSiteChanged() { changed({.part = ViewPart::current}); }
    void logChanged(int site, LogKind log) { changed({.part = ViewPart::log, .site = site, .log = log}); }
    void listingChanged(int site) { changed({.part = ViewPart::listing, .site = site}); }
    void pathChanged(int site) { changed({.part = ViewPart::path, .site = site}); }
    void activityChanged(int site) { changed({.part = ViewPart::activity, .site = site}); }
    void chattrAnswered(int site) { changed({.part = ViewPart::chattr, .site = site}); }
    void accountsChanged(int site, Accounts accounts, AccountChange change) {
        changed({.part = ViewPart::accounts, .site = site, .accounts = accounts, .account = change});
    }
    void sessionReset(int site) { changed({.part = ViewPart::session, .site = site}); }
    void lastErrorChanged(int site) { changed({.part = ViewPart::lastError, .site = site}); }
};

} // namespace corvel

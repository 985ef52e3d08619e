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

// What the core tells the window. Each call says that something has changed and names the site (from 1); the
// window reads the new state from mdlMain when it next paints. Calls are cheap and may be frequent: an
// implementation gathers them and redraws once per turn of the event loop.
class Views {
  public:
    virtual ~Views() = default;

    virtual void siteAdded(int site) = 0;
    virtual void siteRenamed(int site) = 0;
    virtual void currentSiteChanged() = 0;
    virtual void logChanged(int site, LogKind log) = 0;
    // The browser's rows, their order, the counts, or whether anything can be done with them. Where the rows
    // are not arranged, the window has them arranged when it finds the time.
    virtual void listingChanged(int site) = 0;
    virtual void pathChanged(int site) = 0;     // the browser's path box
    virtual void activityChanged(int site) = 0; // who is online, and the counters of it
    virtual void chattrAnswered(int site) = 0;  // to whom a directory is shown
    virtual void accountsChanged(int site, Accounts accounts, AccountChange change) = 0;
    virtual void sessionReset(int site) = 0;     // the connection has ended; tables and activity are empty
    virtual void lastErrorChanged(int site) = 0; // what the server refused last
    // A dialog is to open for the row selected in the site's list: the users for the last two, else the
    // browser. Without one, none opens.
    virtual void dialogWanted(int site, Dialog dialog) = 0;
};

} // namespace corvel

#pragma once

namespace corvel {

// The three text logs of a site.
enum class LogKind { console, commandResults, browserReply };

// The dialogs that an entry of a custom menu can ask for.
enum class Dialog { chmod, chattr, nuke, copyUser };

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
    virtual void listingChanged(int site) = 0;  // the browser's rows, their order or the counts
    virtual void pathChanged(int site) = 0;     // the browser's path box
    virtual void activityChanged(int site) = 0; // who is online, and the counters of it
    virtual void chattrAnswered(int site) = 0;  // to whom a directory is shown
    virtual void usersChanged(int site) = 0;    // the user table, and with it the list
    virtual void groupsChanged(int site) = 0;
    virtual void usersSorted(int site) = 0; // the order of the rows alone
    virtual void groupsSorted(int site) = 0;
    // The details of the record at index in the table are to be shown, in its row and in the editor.
    virtual void userShown(int site, int index) = 0;
    virtual void groupShown(int site, int index) = 0;
    virtual void sessionReset(int site) = 0;     // the connection has ended; tables and activity are empty
    virtual void lastErrorChanged(int site) = 0; // what the server refused last
    // A dialog is to open for the row selected in the site's list: the users for copyUser, else the browser.
    // Without one, none opens.
    virtual void dialogWanted(int site, Dialog dialog) = 0;
};

} // namespace corvel

#pragma once

#include "app/Outbox.h"
#include "common/Command.h"
#include "common/Ports.h"
#include "config/Settings.h"
#include "net/SiteSession.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What a person can do in a site's remote file browser. Rows are display rows, from 0; a row that is not
// there does nothing. The list itself changes only when a new listing arrives.
class BrowserActions {
  public:
    // All are borrowed and must outlive the actions.
    BrowserActions(Sites& sites, Outbox& outbox, Prompts& prompts, Views& views, const Settings& settings,
                   StateStore& store)
        : sites_(sites), outbox_(outbox), prompts_(prompts), views_(views), settings_(settings),
          store_(store) {}

    // Buttons cmdBrowser_0 to _2.
    void root(int site);
    void refresh(int site);
    void refreshAndNoop(int site);
    // Goes to the directory above, where the one that was left is selected.
    void up(int site);
    // Goes to a directory that a person has typed, in the server's bytes. The path box is told of the answer,
    // whatever it is.
    void goTo(int site, std::string_view directory);

    void open(int site, int row); // double click: walks into a directory or along a link
    void remove(int site, int row);
    // The same for several rows, with one question, as one job; links and ".." are left out.
    void remove(int site, const std::vector<int>& rows);
    void makeDirectory(int site);
    // newName: the edited name in the server's bytes, as a person left it.
    void rename(int site, int row, const std::string& newName);
    void sortBy(int site, int column); // header click, column from 0; the selected entry stays selected

    // Reads the server's listings as padded ones from now on, and lists again.
    void acceptPadding(int site);
    // Does not offer that any more.
    void refusePadding(int site);

    // Why act cannot be done with those rows, for a person to read; empty where it can.
    std::string whyNot(int site, BrowserAct act, const std::vector<int>& rows) const;

    // Whether something can be done with the rows; if not, the status bar says why.
    bool isUsable(int site) const;
    // The same for names of directory, which was the current one when they were taken and has to be still.
    bool isIn(int site, std::string_view directory) const;

    // Sends what a dialog made, in its order: nothing, or why it cannot be sent, as a message. sendIn: what
    // names an entry of directory, which was the current one when the dialog opened and has to be still.
    std::optional<std::string> send(int site, std::vector<Command> commands);
    std::optional<std::string> sendIn(int site, std::string_view directory, std::vector<Command> commands);

    // Does a part of ordering the rows where they are not arranged; true when there is no more to do.
    bool arrange(int site);

    // The row that a person has selected, -1 for none. The list says so whenever it becomes another one.
    void selectRow(int site, int row);
    const BrowserEntry* selectedEntry(int site) const;

    // The entry that a display row shows, or nothing when there is no such row.
    const BrowserEntry* entryAt(int site, int row) const;

  private:
    bool sendOrTell(int site, std::vector<Command> commands, std::string title = {});
    Outbox::Ended refreshing(int site);
    void askToRemove(int site, const std::string& question, std::vector<Command> commands,
                     const std::string& what);
    void tell(int site, std::string_view reason) const;
    void navigate(int site, const std::string& directory);
    std::string_view whyNotIn(int site, std::string_view directory) const;

    Sites& sites_;
    Outbox& outbox_;
    Prompts& prompts_;
    Views& views_;
    const Settings& settings_;
    StateStore& store_;
};

} // namespace corvel

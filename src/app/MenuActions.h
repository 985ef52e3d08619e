#pragma once

#include "app/AdminActions.h"
#include "app/BrowserActions.h"
#include "app/Outbox.h"
#include "common/Ports.h"
#include "config/Settings.h"
#include "menus/mdlMenus.h"
#include "net/SiteSession.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The custom menus: what they show, and what their entries do. Menus and actions work on the rows selected
// in the lists of a site. site may be 0, for none: then nothing is selected, and what needs a site does
// nothing.
class MenuActions {
  public:
    // What the actions work with. Everything is borrowed and must outlive them.
    struct Services {
        const Sites& sites;
        const Settings& settings;
        const BrowserActions& browser;
        AdminActions& admin;
        Outbox& outbox;
        Prompts& prompts;
        Views& views;
        Shell& shell;
    };

    explicit MenuActions(Services services) : services_(services) {}

    // The entries of the menu of that kind, made for the selected row of its list: as many as settings.ini
    // has lines for it.
    std::vector<MenuItem> ShowCustomMenu(int site, MenuKind kind) const;

    // The directory of the row for which the entries of that kind are made, in the server's bytes; nothing
    // where they are of no row of the browser.
    std::optional<std::string> directoryOf(int site, MenuKind kind) const;

    // Does what an entry says, after a yes where it asks first or where a server chose what it acts on. One
    // that says nothing that is known does nothing, nor does one that was made for a row of a directory that
    // the browser has left; the status bar says so. What may not be done is said in a message.
    void ExecuteMenuCommand(int site, const MenuCommand& command, std::optional<std::string> directory = {});

  private:
    struct Executor;

    void execute(int site, const MenuCommand& command, const std::optional<std::string>& directory);

    Services services_;
};

} // namespace corvel

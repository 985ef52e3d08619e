#include "app/MenuActions.h"

#include "browser/FileDialogs.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvel {

namespace {

// The variables of a menu for a row of its list: what the row reads, UTF-8; empty texts without one.
MenuVariables browserVariables(const SiteSession& session, const BrowserEntry* entry) {
    const auto text = [&](std::string_view BrowserEntry::*member) {
        return entry == nullptr ? std::string() : toUtf8(entry->*member);
    };
    return {{"pwd", toUtf8(session.sCwd)},
            {"name", text(&BrowserEntry::name)},
            {"user", text(&BrowserEntry::owner)},
            {"group", text(&BrowserEntry::group)}};
}

MenuVariables userVariables(const clsUser* user) {
    const std::string name = user == nullptr ? "" : toUtf8(user->sName);
    return {{"name", name},
            {"user", name},
            {"uid", user == nullptr ? "" : std::to_string(user->iUID)},
            {"group", user == nullptr ? "" : toUtf8(user->sStdGroup)}};
}

MenuVariables groupVariables(const clsGroup* group) {
    return {{"name", group == nullptr ? "" : toUtf8(group->sName)},
            {"gid", group == nullptr ? "" : std::to_string(group->iGID)}};
}

MenuVariables connectionVariables(const SiteSession& session) {
    const std::vector<ActivityRow>& rows = session.activityRows.rows;
    const auto row = static_cast<std::size_t>(session.activityRow);
    const auto text = [&](ActivityCell cell) {
        return row < rows.size() ? toUtf8(rows[row].text(cell)) : std::string();
    };
    return {{"cid", std::string(trim(text(ActivityCell::cid)))},
            {"user", text(ActivityCell::user)},
            {"group", text(ActivityCell::group)},
            {"ident", text(ActivityCell::ident)},
            {"clientip", text(ActivityCell::ip)},
            {"pwd", text(ActivityCell::pwd)}};
}

} // namespace

// The actions, a function each.
struct MenuActions::Executor {
    const Services& services;
    int site;
    const MenuCommand& command;

    void exec() const { services.shell.open(command.target); }
    void exit() const { services.shell.quit(); }
    void copy() const { services.shell.setClipboardText(command.argument); }

    void kill() const {
        if (const ProcessId id = services.shell.FindProcessByPath(foldCase(command.target)); id != 0) {
            services.shell.KillProcess(id);
        }
    }

    void ftp() const {
        if (site > 0) {
            const TextEncoding encoding = at(services.sites, site).session.encoding;
            const std::string line = fromUtf8(command.argument, encoding);
            // Nobody knows what the command changes: what is known of the accounts may be wrong behind it.
            services.outbox.startOrTell(site, LogKind::commandResults,
                                        {{{.sCommand = line, .bQuiet = false, .iHandler = handler::menuFtp}}},
                                        [&admin = services.admin, at = site](const Receipt& /*receipt*/) {
                                            admin.forgetDetails(at);
                                        });
        }
    }

    template <Dialog dialog>
    void open() const {
        const bool isSelected =
            dialog == Dialog::copyUser
                ? services.admin.users().current(site) != nullptr
                : services.browser.selectedEntry(site) != nullptr && services.browser.isUsable(site);
        if (isSelected) {
            services.views.dialogWanted(site, dialog);
        }
    }

    // The reply to the query fills the dialog, so the query goes first.
    void chattr() const {
        const BrowserEntry* const entry = services.browser.selectedEntry(site);
        if (entry != nullptr && typeKey(*entry) == directoryKey && services.browser.isUsable(site)) {
            if (entry->name.find('"') != std::string_view::npos) {
                services.prompts.Message("A directory with a double quote in its name cannot be hidden: the "
                                         "command has its name between double quotes.");
            } else if (services.outbox.startOrTell(site, LogKind::browserReply,
                                                   {{chattrQuery(entry->name)}})) {
                services.views.dialogWanted(site, Dialog::chattr);
            }
        }
    }
};

std::vector<MenuItem> MenuActions::ShowCustomMenu(int site, MenuKind kind) const {
    const auto& [sites, settings, browser, admin, outbox, prompts, views, shell] = services_;
    const SiteSession& session = at(sites, site).session;
    switch (kind) {
    case MenuKind::tray:
        break;
    case MenuKind::browser:
        return expandMenu(settings.menu_browser, browserVariables(session, browser.selectedEntry(site)));
    case MenuKind::userList:
        return expandMenu(settings.menu_userlist, userVariables(admin.users().current(site)));
    case MenuKind::groupList:
        return expandMenu(settings.menu_grouplist, groupVariables(admin.groups().current(site)));
    case MenuKind::activity:
        return expandMenu(settings.menu_activity, connectionVariables(session));
    }
    return expandMenu(settings.menu_tray, {});
}

std::optional<std::string> MenuActions::directoryOf(int site, MenuKind kind) const {
    const bool isOfRow = kind == MenuKind::browser && services_.browser.selectedEntry(site) != nullptr;
    return isOfRow ? std::optional(at(services_.sites, site).session.sCwd) : std::nullopt;
}

void MenuActions::ExecuteMenuCommand(int site, const MenuCommand& command,
                                     std::optional<std::string> directory) {
    if (!command.problem.empty()) {
        services_.prompts.Message("Not done, since it " + command.problem + ":\r\n" +
                                  visibleText(command.argument));
        return;
    }
    if (!command.asksFirst && !command.isServersChoice) {
        execute(site, command, directory);
        return;
    }
    const std::string question =
        command.asksFirst ? menuQuestion(command.argument)
                          : "The server chose what this entry acts on. Do it all the same?\r\n\r\n" +
                                command.action + " " + visibleText(command.target);
    services_.prompts.AskYesNo(question, [this, site, command, directory = std::move(directory)](bool yes) {
        if (yes) {
            execute(site, command, directory);
        }
    });
}

void MenuActions::execute(int site, const MenuCommand& command, const std::optional<std::string>& directory) {
    if (directory && !services_.browser.isIn(site, *directory)) {
        return;
    }
    struct Action {
        std::string_view word;
        void (Executor::*run)() const;
    };
    static constexpr std::array<Action, 9> actions = {{
        // and "null", which does nothing
        {"exec", &Executor::exec},
        {"exit", &Executor::exit},
        {"chmod", &Executor::open<Dialog::chmod>},
        {"nuke", &Executor::open<Dialog::nuke>},
        {"copyuser", &Executor::open<Dialog::copyUser>},
        {"chattr", &Executor::chattr},
        {"ftp", &Executor::ftp},
        {"copy", &Executor::copy},
        {"kill", &Executor::kill},
    }};
    const auto* const action = std::ranges::find(actions, command.action, &Action::word);
    if (action != actions.end()) {
        (Executor{services_, site, command}.*action->run)();
    }
}

} // namespace corvel

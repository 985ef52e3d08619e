#include "app/MenuActions.h"

#include "browser/FileDialogs.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <array>
#include <optional>

namespace corvel {

namespace {

BrowserMenuRow browserRow(const SiteSession& session, const BrowserEntry* entry) {
    const auto text = [&session](std::string_view bytes) { return toUtf8(bytes, session.encoding); };
    if (entry == nullptr) {
        return {.pwd = text(session.sCwd)};
    }
    return {.pwd = text(session.sCwd),
            .name = text(entry->name),
            .user = text(entry->owner),
            .group = text(entry->group)};
}

UserMenuRow userRow(const SiteSession& session, const clsUser* user) {
    return user == nullptr ? UserMenuRow{}
                           : UserMenuRow{.name = toUtf8(user->sName, session.encoding),
                                         .uid = std::to_string(user->iUID),
                                         .group = toUtf8(user->sStdGroup, session.encoding)};
}

GroupMenuRow groupRow(const SiteSession& session, const clsGroup* group) {
    return group == nullptr ? GroupMenuRow{}
                            : GroupMenuRow{.name = toUtf8(group->sName, session.encoding),
                                           .gid = std::to_string(group->iGID)};
}

ConnectionMenuRow connectionRow(const SiteSession& session) {
    const auto index = static_cast<std::size_t>(session.activityRow);
    if (session.activityRow < 0 || index >= session.activityRows.rows.size()) {
        return {};
    }
    const ActivityRow& row = session.activityRows.rows[index];
    const auto text = [&](ActivityCell cell) { return toUtf8(row.text(cell), session.encoding); };
    return {.cid = std::string(trim(row.text(ActivityCell::cid))), // padded in the list
            .user = text(ActivityCell::user),
            .group = text(ActivityCell::group),
            .ident = text(ActivityCell::ident),
            .clientip = text(ActivityCell::ip),
            .pwd = text(ActivityCell::pwd)};
}

} // namespace

// The actions, a function each.
struct MenuActions::Executor {
    const Services& services;
    int site;
    std::string_view argument;

    void nothing() const {}

    void exec() const {
        const std::string_view target = execTarget(argument);
        if (isOneLine(target)) {
            services.shell.open(std::string(target));
        } else {
            services.prompts.Message("Not opened, since it holds a line break or a NUL character:\r\n" +
                                     visibleText(target));
        }
    }
    void exit() const { services.shell.quit(); }
    void copy() const { services.shell.setClipboardText(std::string(argument)); }

    void kill() const {
        if (const ProcessId id = services.shell.FindProcessByPath(killPattern(argument)); id != 0) {
            services.shell.KillProcess(id);
        }
    }

    void ftp() const {
        if (site > 0) {
            const TextEncoding encoding = at(services.sites, site).session.encoding;
            const std::string line = fromUtf8(argument, encoding).value_or(std::string(argument));
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
        if (entry != nullptr && typeKey(*entry) == 1 && services.browser.isUsable(site)) {
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

std::vector<MenuItem> MenuActions::ShowCustomMenu(int site, int kind) const {
    const std::optional<MenuKind> menu = menuKind(kind);
    return menu ? expandMenu(menuEntries(services_.settings, *menu), variables(site, *menu))
                : std::vector<MenuItem>();
}

MenuVariables MenuActions::variables(int site, MenuKind kind) const {
    const SiteSession& session = at(services_.sites, site).session;
    switch (kind) {
    case MenuKind::tray:
        break;
    case MenuKind::browser:
        return menuVariables(browserRow(session, services_.browser.selectedEntry(site)));
    case MenuKind::userList:
        return menuVariables(userRow(session, services_.admin.users().current(site)));
    case MenuKind::groupList:
        return menuVariables(groupRow(session, services_.admin.groups().current(site)));
    case MenuKind::activity:
        return menuVariables(connectionRow(session));
    }
    return {};
}

std::optional<std::string> MenuActions::directoryOf(int site, MenuKind kind) const {
    const bool isOfRow = kind == MenuKind::browser && services_.browser.selectedEntry(site) != nullptr;
    return isOfRow ? std::optional(at(services_.sites, site).session.sCwd) : std::nullopt;
}

void MenuActions::ExecuteMenuCommand(int site, std::string_view line, std::optional<std::string> directory) {
    MenuCommand command = parseMenuCommand(line);
    if (!command.asksFirst) {
        execute(site, command, directory);
        return;
    }
    const std::string question = menuQuestion(command.argument);
    services_.prompts.AskYesNo(
        question, DefaultAnswer::no,
        [this, site, command = std::move(command), directory = std::move(directory)](bool yes) {
            if (yes) {
                execute(site, command, directory);
            }
        });
}

void MenuActions::execute(int site, const MenuCommand& command, const std::optional<std::string>& directory) {
    if (directory && !services_.browser.isIn(site, *directory)) {
        return;
    }
    struct Row {
        MenuAction action;
        void (Executor::*run)() const;
    };
    static constexpr std::array<Row, 11> table = {{
        {MenuAction::nothing, &Executor::nothing},
        {MenuAction::null, &Executor::nothing},
        {MenuAction::exec, &Executor::exec},
        {MenuAction::exit, &Executor::exit},
        {MenuAction::chmod, &Executor::open<Dialog::chmod>},
        {MenuAction::nuke, &Executor::open<Dialog::nuke>},
        {MenuAction::copyUser, &Executor::open<Dialog::copyUser>},
        {MenuAction::chattr, &Executor::chattr},
        {MenuAction::ftp, &Executor::ftp},
        {MenuAction::copy, &Executor::copy},
        {MenuAction::kill, &Executor::kill},
    }};
    const Executor executor{services_, site, command.argument};
    (executor.*std::ranges::find(table, command.action, &Row::action)->run)();
}

} // namespace corvel

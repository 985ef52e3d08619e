#include "browser/qt/BrowserDialogs.h"

#include "browser/qt/BrowserPanel.h"
#include "browser/qt/frmBrowserCHATTR.h"
#include "browser/qt/frmBrowserCHMOD.h"
#include "browser/qt/frmBrowserNUKE.h"
#include "widgets/DialogParts.h"
#include "widgets/TextConversion.h"

#include <string>
#include <vector>

namespace corvel {

namespace {

constexpr int directoryKey = 1;

// A list box with the names of a table, in its order.
template <typename Record>
std::vector<SelectableEntry> namesOf(const std::vector<Record>& table) {
    std::vector<SelectableEntry> entries;
    for (const Record& record : table) {
        if (!isPlaceholder(record)) {
            entries.push_back({.sText = record.sName});
        }
    }
    return entries;
}

NukeSyntax nukeSyntax(const Settings& settings, TextEncoding encoding) {
    return {.site_nuke_syntax = bytesOf(fromCore(settings.site_nuke_syntax), encoding),
            .site_nuke_replace_spaces = bytesOf(fromCore(settings.site_nuke_replace_spaces), encoding)};
}

} // namespace

void openChmod(mdlMain& program, int site, int row, BrowserPanel& panel) {
    const BrowserEntry* const entry = program.browser().entryAt(site, row);
    if (entry == nullptr) {
        return;
    }
    const SiteSession& session = program.site(site).session;
    openDialog(*new frmBrowserCHMOD(
        {chmodForm(session.sCwd, *entry), session.encoding},
        [&program, site](const ChmodForm& form) {
            return program.browser().send(site, {chmodCommand(form)});
        },
        &panel));
}

void openNuke(mdlMain& program, int site, int row, BrowserPanel& panel) {
    const BrowserEntry* const entry = program.browser().entryAt(site, row);
    if (entry == nullptr) {
        return;
    }
    const SiteSession& session = program.site(site).session;
    const bool hasSyntax = !program.settings().site_nuke_syntax.empty();
    openDialog(*new frmBrowserNUKE(
        {{.txtPath = session.sCwd, .txtName = std::string(entry->name)}, hasSyntax, session.encoding},
        [&program, &session, site, sCwd = session.sCwd](const NukeForm& form) {
            const NukeSyntax syntax = nukeSyntax(program.settings(), session.encoding);
            return program.browser().sendIn(site, sCwd, {nukeCommand(form, syntax)});
        },
        &panel));
}

void openChattr(mdlMain& program, int site, int row, BrowserPanel& panel) {
    const BrowserEntry* const entry = program.browser().entryAt(site, row);
    if (entry == nullptr || typeKey(*entry) != directoryKey) {
        return;
    }
    const SiteSession& session = program.site(site).session;
    const ChattrForm form = {.sName = std::string(entry->name),
                             .lstUsers = namesOf(session.Users),
                             .lstGroups = namesOf(session.Groups)};
    auto* const dialog = new frmBrowserCHATTR(
        {form, session.encoding},
        [&program, site, sCwd = session.sCwd](const ChattrForm& confirmed) {
            return program.browser().sendIn(site, sCwd, chattrCommands(confirmed));
        },
        &panel);
    // The answer to another question may still be on its way, from a dialog that was closed before it came.
    QObject::connect(&panel, &BrowserPanel::chattrAnswered, dialog,
                     [&session, dialog, site, query = chattrQuery(form.sName).sCommand](int answered) {
                         if (answered == site && session.chattrAnswer.sQuery == query) {
                             dialog->setAnswer(session.chattrAnswer, session.encoding);
                         }
                     });
    openDialog(*dialog);
}

} // namespace corvel

#include "app/AccountTable.h"

#include "admin/AccountLists.h"
#include "common/Errors.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace corvel {

namespace {

std::string nameInEmptyForm(UserForm& form, const clsUser& user) {
    form.txtUserUID = std::to_string(user.iUID);
    return form.txtUserName = user.sName;
}
std::string nameInEmptyForm(GroupForm& form, const clsGroup& group) {
    form.txtGroupGID = std::to_string(group.iGID);
    return form.txtGroupname = group.sName;
}

// The record with the id, or null; as constant as the session is.
template <typename Kind, typename Session>
auto* findRecord(Session& session, std::optional<std::int16_t> id) {
    auto& table = session.*Kind::table;
    const auto found =
        id && !isPlaceholder(table.front()) ? std::ranges::find(table, *id, Kind::id) : table.end();
    return found == table.end() ? nullptr : &*found;
}

// The record in a row of the list, or null.
template <typename Kind>
const typename Kind::Record* atRow(const SiteSession& session, int row) {
    const std::vector<std::size_t>& rows = (session.*Kind::view).rows;
    const auto place = static_cast<std::size_t>(row);
    return row < 0 || place >= rows.size() ? nullptr : &(session.*Kind::table)[rows[place]];
}

// Everything of a record that its row shows.
auto rowOf(const clsUser& user) {
    return std::tuple(user.sName, user.sStdGroup, user.sFlags);
}
auto rowOf(const clsGroup& group) {
    return std::tuple(group.sName);
}

// What was typed for a record that the new table does not have is gone, which the person is told.
template <typename Kind>
void dropDraftsOfTheVanished(const ReplyServices& services, const Reply& reply) {
    std::erase_if((reply.session.*Kind::view).drafts, [&](const auto& entry) {
        const auto* const record = findRecord<Kind>(reply.session, entry.first);
        if (record != nullptr && record->sName == entry.second.sName) {
            return false;
        }
        const std::string line = "What was typed for " + std::string(Kind::noun) + " " + entry.second.sName +
                                 " is lost: the server has no such " + std::string(Kind::noun) + " any more";
        services.log.LogCommandResults(reply.site, line);
        services.log.tell(reply.site, line);
        return true;
    });
}

} // namespace

std::string UserKind::deleteQuestion(const clsUser& user) {
    return deleteUserQuestion(visibleText(toUtf8(user.sName)), visibleText(toUtf8(user.sStdGroup)));
}

std::string GroupKind::deleteQuestion(const clsGroup& group) {
    return deleteGroupQuestion(visibleText(toUtf8(group.sName)));
}

template <typename Kind>
void AccountTable<Kind>::reload(int site) {
    services_.outbox.startOrTell(site, LogKind::commandResults, {.commands = {Kind::tableCommand()}});
}

template <typename Kind>
void AccountTable<Kind>::sortBy(int site, int column) {
    AccountView& view = session(site).*Kind::view;
    view.order = afterHeaderClick(view.order, column);
    view.rows = orderedRows(session(site).*Kind::table, view.order);
    changed(site, AccountChange::order);
}

template <typename Kind>
void AccountTable<Kind>::open(int site, int row) {
    AccountView& view = session(site).*Kind::view;
    const Record* const record = atRow<Kind>(session(site), row);
    if (record == nullptr || (view.currentId == record->*Kind::id && view.details == Details::asked)) {
        return;
    }
    view.currentId = record->*Kind::id;
    view.details = record->got_info ? Details::known : Details::wanted;
    changed(site, AccountChange::editor);
    proceed(site);
}

template <typename Kind>
void AccountTable<Kind>::remove(int site, int row) {
    const Record* const record = atRow<Kind>(session(site), row);
    if (record == nullptr) {
        return;
    }
    services_.prompts.AskYesNo(
        Kind::deleteQuestion(*record), [this, site, command = Kind::deleteCommand(record->sName)](bool yes) {
            if (yes) {
                services_.outbox.startOrTell(site, LogKind::commandResults, {.commands = {command}});
            }
        });
}

template <typename Kind>
int AccountTable<Kind>::currentRow(int site) const {
    const Record* const record = current(site);
    if (record == nullptr) {
        return -1;
    }
    const std::vector<std::size_t>& rows = (session(site).*Kind::view).rows;
    const auto index = static_cast<std::size_t>(record - (session(site).*Kind::table).data());
    return static_cast<int>(std::ranges::find(rows, index) - rows.begin());
}

template <typename Kind>
const typename Kind::Record* AccountTable<Kind>::current(int site) const {
    return findRecord<Kind>(session(site), (session(site).*Kind::view).currentId);
}

template <typename Kind>
const typename Kind::Record* AccountTable<Kind>::find(int site, std::int16_t id) const {
    return findRecord<Kind>(session(site), id);
}

template <typename Kind>
bool AccountTable<Kind>::hasDraft(int site, std::size_t index) const {
    const std::map<std::int16_t, Draft>& drafts = (session(site).*Kind::view).drafts;
    return !drafts.empty() && drafts.contains((session(site).*Kind::table)[index].*Kind::id);
}

template <typename Kind>
AccountEditor<typename Kind::Form> AccountTable<Kind>::editor(int site) const {
    const AccountView& view = session(site).*Kind::view;
    const Record* const record = current(site);
    AccountEditor<Form> editor;
    if (record == nullptr) {
        return editor;
    }
    editor.id = view.currentId;
    editor.details = view.details;
    editor.problem = view.detailsProblem;
    if (record->got_info) {
        editor.form = Kind::form(session(site), *record);
    } else {
        nameInEmptyForm(editor.form, *record);
    }
    const auto draft = view.drafts.find(*view.currentId);
    editor.draft = draft == view.drafts.end() ? nullptr : &draft->second;
    return editor;
}

template <typename Kind>
typename Kind::Form AccountTable<Kind>::typedForm(int site) const {
    AccountEditor<Form> shownNow = editor(site);
    if (shownNow.draft != nullptr) {
        for (const auto& [box, text] : shownNow.draft->boxes) {
            shownNow.form.box(box) = fromUtf8(text, session(site).encoding);
        }
    }
    return std::move(shownNow.form);
}

template <typename Kind>
void AccountTable<Kind>::typed(int site, std::size_t box, std::optional<std::string> text) {
    AccountView& view = session(site).*Kind::view;
    const Record* const record = current(site);
    if (record == nullptr) {
        return;
    }
    Draft& draft = view.drafts[*view.currentId];
    draft.sName = record->sName;
    if (text) {
        draft.boxes[box] = *std::move(text);
    } else {
        draft.boxes.erase(box);
    }
    if (draft.boxes.empty()) {
        view.drafts.erase(*view.currentId);
    }
    changed(site, AccountChange::marks);
}

template <typename Kind>
void AccountTable<Kind>::save(int site) {
    const Record* const record = current(site);
    if (record == nullptr) {
        return;
    }
    if (!record->got_info) {
        say(site, "Not saved: the details have not come from the server");
        return;
    }
    const std::int16_t id = record->*Kind::id;
    const std::optional<std::string> question = Kind::saveQuestion(*record, typedForm(site));
    if (!question) {
        saveNow(site, id, true);
        return;
    }
    services_.prompts.AskYesNo(*question, [this, site, id](bool yes) { saveNow(site, id, yes); });
}

// The record is looked for again: the table may have been loaded anew, or another row picked, while the
// question was open.
template <typename Kind>
void AccountTable<Kind>::saveNow(int site, std::int16_t id, bool sendFlags) {
    const Record* const record = current(site);
    if (record == nullptr || record->*Kind::id != id || !record->got_info) {
        say(site, "Not saved: another " + std::string(Kind::noun) + " is open by now");
        return;
    }
    const Draft* const draft = editor(site).draft;
    Draft saved = draft == nullptr ? Draft() : *draft;
    if (!sendFlags) { // only users have flags
        saved.boxes.erase(UserForm::flagsBox);
    }
    const std::optional<std::string> problem =
        change(site, id, Kind::saveCommands(*record, typedForm(site), sendFlags),
               [this, site, id, saved](const Receipt& receipt) {
                   if (receipt.end == Receipt::End::done) {
                       dropSaved(site, id, saved);
                   }
               });
    if (problem) {
        say(site, *problem);
    }
}

// What was saved is no draft any more, but for boxes in which the person has typed on.
template <typename Kind>
void AccountTable<Kind>::dropSaved(int site, std::int16_t id, const Draft& saved) {
    std::map<std::int16_t, Draft>& drafts = (session(site).*Kind::view).drafts;
    const auto found = drafts.find(id);
    if (found == drafts.end()) {
        return;
    }
    std::erase_if(found->second.boxes, [&saved](const auto& typed) {
        const auto sent = saved.boxes.find(typed.first);
        return sent != saved.boxes.end() && sent->second == typed.second;
    });
    if (found->second.boxes.empty()) {
        drafts.erase(found);
    }
    changed(site, AccountChange::marks);
    changed(site, AccountChange::editor);
}

template <typename Kind>
void AccountTable<Kind>::reloadDetails(int site) {
    AccountView& view = session(site).*Kind::view;
    if (current(site) == nullptr) {
        return;
    }
    const std::int16_t id = *view.currentId;
    const auto ask = [this, site, id] {
        AccountView& now = session(site).*Kind::view;
        if (now.drafts.erase(id) > 0) {
            changed(site, AccountChange::marks);
        }
        if (now.currentId == id) {
            now.details = Details::wanted;
            proceed(site);
        }
    };
    if (!view.drafts.contains(id)) {
        ask();
        return;
    }
    services_.prompts.AskYesNo("What you typed here is not saved. Throw it away?", [ask](bool yes) {
        if (yes) {
            ask();
        }
    });
}

template <typename Kind>
void AccountTable<Kind>::forgetDetails(int site) {
    for (Record& record : session(site).*Kind::table) {
        record.got_info = false;
    }
    if (current(site) != nullptr) {
        (session(site).*Kind::view).details = Details::wanted;
        proceed(site);
    }
}

template <typename Kind>
std::optional<std::string> AccountTable<Kind>::change(int site, std::int16_t id, std::vector<Command> changes,
                                                      Outbox::Ended ended) {
    changes.push_back(Kind::detailsCommand(session(site).*Kind::table, id));
    return services_.outbox.start(site, {.commands = std::move(changes)}, std::move(ended));
}

template <typename Kind>
void AccountTable<Kind>::proceed(int site) {
    AccountView& view = session(site).*Kind::view;
    if (view.details != Details::wanted || current(site) == nullptr) {
        return;
    }
    const std::optional<std::string> problem = services_.outbox.start(
        site, {.commands = {Kind::detailsCommand(session(site).*Kind::table, *view.currentId)},
               .wish = std::string(Kind::noun)});
    view.details = problem ? Details::refused : Details::asked;
    view.detailsProblem = problem.value_or(std::string());
    changed(site, AccountChange::editor);
}

template <typename Kind>
void AccountTable<Kind>::tableReply(const ReplyServices& services, const Reply& reply) {
    AccountView& view = reply.session.*Kind::view;
    auto read = Kind::parseTable(reply.site, reply.lines);
    reply.session.*Kind::table = std::move(read.table);
    view.rows = orderedRows(reply.session.*Kind::table, view.order);
    view.isRead = true;
    view.problem = isSuccess(reply) ? std::string_view() : reply.lastLine;
    // A new table knows no details: those of the open record are asked for again.
    const bool isOpen = findRecord<Kind>(reply.session, view.currentId) != nullptr;
    view.currentId = isOpen ? view.currentId : std::nullopt;
    view.details = isOpen ? Details::wanted : Details::none;
    if (isSuccess(reply)) {
        dropDraftsOfTheVanished<Kind>(services, reply);
    }
    services.views.accountsChanged(reply.site, Kind::accounts, AccountChange::table);
    if (const std::optional<std::string> message = badLinesMessage(read.bad)) {
        reportProblem(services, reply, *message);
    }
}

template <typename Kind>
void AccountTable<Kind>::detailsReply(const ReplyServices& services, const Reply& reply) {
    AccountView& view = reply.session.*Kind::view;
    auto* const record = findRecord<Kind>(reply.session, reply.command.recordId);
    const auto isOver = [&](Details details, std::string problem) {
        if (view.currentId == reply.command.recordId && view.details != Details::wanted) {
            view.details = record != nullptr && record->got_info ? Details::known : details;
            view.detailsProblem = std::move(problem);
        }
        services.views.accountsChanged(reply.site, Kind::accounts, AccountChange::editor);
    };
    if (!isSuccess(reply)) {
        services.log.tell(reply.site, reply.lastLine);
        isOver(Details::refused, std::string(reply.lastLine));
        return;
    }
    if (record == nullptr) {
        reportProblem(services, reply, "the " + std::string(Kind::noun) + " is not in the table any more");
        return;
    }
    const auto before = rowOf(*record);
    try {
        (record->*Kind::parseDetails)(reply.lines);
    } catch (const ParseError& error) {
        isOver(Details::refused, describe(error));
        throw;
    }
    if (before != rowOf(*record)) {
        view.rows = orderedRows(reply.session.*Kind::table, view.order);
        if (const auto draft = view.drafts.find(record->*Kind::id); draft != view.drafts.end()) {
            draft->second.sName = record->sName;
        }
        services.views.accountsChanged(reply.site, Kind::accounts, AccountChange::record);
    }
    isOver(Details::known, {});
}

template <typename Kind>
void AccountTable<Kind>::say(int site, const std::string& problem) const {
    services_.log.LogCommandResults(site, problem);
    services_.log.tell(site, problem);
}

template class AccountTable<UserKind>;
template class AccountTable<GroupKind>;

} // namespace corvel

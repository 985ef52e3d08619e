#include "app/AccountTable.h"

#include "admin/AccountLists.h"
#include "common/TextEncoding.h"

#include <algorithm>
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

constexpr std::string_view saveTitle = "save ";

// The record in a row of the list, or null.
template <typename Kind>
const typename Kind::Record* atRow(const SiteSession& session, int row) {
    const std::vector<std::size_t>& rows = (session.*Kind::view).rows;
    const auto place = static_cast<std::size_t>(row);
    return row < 0 || place >= rows.size() ? nullptr : &(session.*Kind::table)[rows[place]];
}

} // namespace

std::string UserKind::deleteQuestion(const clsUser& user) {
    return deleteUserQuestion(shownName(user.sName), shownName(user.sStdGroup));
}

std::string GroupKind::deleteQuestion(const clsGroup& group) {
    return deleteGroupQuestion(shownName(group.sName));
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
void AccountTable<Kind>::remove(int site, const std::vector<int>& rows) {
    Job job;
    std::vector<std::string> names;
    std::string question;
    for (const int row : rows) {
        if (const Record* const record = atRow<Kind>(session(site), row)) {
            job.commands.push_back(Kind::deleteCommand(record->sName));
            job.accounts.push_back(record->sName);
            names.push_back(Kind::nameInQuestion(*record));
            question = Kind::deleteQuestion(*record);
        }
    }
    if (names.empty()) {
        return;
    }
    job.title =
        "delete " + (names.size() == 1 ? shownName(job.accounts.front()) : counted(names.size(), Kind::noun));
    services_.prompts.AskYesNo(names.size() == 1 ? question : deleteSeveralQuestion(Kind::noun, names),
                               [this, site, job = std::move(job)](bool yes) {
                                   if (yes) {
                                       services_.outbox.startOrTell(site, LogKind::commandResults, job);
                                   }
                               });
}

template <typename Kind>
int AccountTable<Kind>::currentRow(int site) const {
    const std::optional<std::int16_t> id = (session(site).*Kind::view).currentId;
    return id ? rowOf(site, *id) : -1;
}

template <typename Kind>
int AccountTable<Kind>::rowOf(int site, std::int16_t id) const {
    const Record* const record = find(site, id);
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
    editor.outcome = view.outcomeId == view.currentId ? view.outcome : std::string();
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
        change(site, id, Kind::saveCommands(*record, typedForm(site), sendFlags), saveTitle,
               [this, site, id, saved](const Receipt& receipt) {
                   dropSaved(site, id, receipt.end == Receipt::End::done ? saved : Draft());
               });
    if (problem) {
        say(site, *problem);
        keepOutcome(site, id, *problem);
    }
}

// What was saved is no draft any more, but for boxes in which the person has typed on; and where the server
// refused some of it, neither is what the record has by now.
template <typename Kind>
void AccountTable<Kind>::dropSaved(int site, std::int16_t id, const Draft& saved) {
    std::map<std::int16_t, Draft>& drafts = (session(site).*Kind::view).drafts;
    const auto found = drafts.find(id);
    if (found == drafts.end()) {
        return;
    }
    Form now;
    const Record* const record = find(site, id);
    const bool isKnown = record != nullptr && record->got_info;
    if (isKnown) {
        now = Kind::form(session(site), *record);
        found->second.sName = record->sName;
    }
    std::erase_if(found->second.boxes, [&](const auto& typed) {
        const auto sent = saved.boxes.find(typed.first);
        return (sent != saved.boxes.end() && sent->second == typed.second) ||
               (isKnown && now.box(typed.first) == fromUtf8(typed.second, session(site).encoding));
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
std::string AccountTable<Kind>::nameOf(int site, std::int16_t id) const {
    const Record* const record = find(site, id);
    return record == nullptr ? std::string() : record->sName;
}

template <typename Kind>
std::optional<std::string> AccountTable<Kind>::change(int site, std::int16_t id, std::vector<Command> changes,
                                                      std::string_view what, Outbox::Ended ended) {
    changes.push_back(Kind::detailsCommand(session(site).*Kind::table, id));
    const std::string name = nameOf(site, id);
    return services_.outbox.start(
        site,
        {.commands = std::move(changes), .title = std::string(what) + shownName(name), .accounts = {name}},
        [this, site, id, what, ended = std::move(ended)](const Receipt& receipt) {
            keepOutcome(site, id, what, receipt);
            if (ended) {
                ended(receipt);
            }
        });
}

template <typename Kind>
void AccountTable<Kind>::keepOutcome(int site, std::int16_t id, std::string_view what,
                                     const Receipt& receipt) {
    const JobHandle job = services_.outbox.journal(site).find(receipt.job);
    if (job == nullptr || changesOf(*job) == 0) {
        return;
    }
    // "password of " is told as "password".
    keepOutcome(site, id, outcomeText(*job, what == saveTitle ? "saved" : what.substr(0, what.find(" of "))));
}

template <typename Kind>
void AccountTable<Kind>::keepOutcome(int site, std::int16_t id, std::string_view text) {
    AccountView& view = session(site).*Kind::view;
    view.outcome = services_.log.clock().timeOfDay().append(" ").append(text);
    view.outcomeId = id;
    changed(site, AccountChange::editor);
}

template <typename Kind>
void AccountTable<Kind>::proceed(int site) {
    AccountView& view = session(site).*Kind::view;
    if (view.details != Details::wanted || current(site) == nullptr) {
        return;
    }
    const std::int16_t id = *view.currentId;
    const std::string name = nameOf(site, id);
    const auto ended = [this, site, id](const Receipt& receipt) {
        AccountView& now = session(site).*Kind::view;
        if (receipt.end == Receipt::End::cancelled && now.currentId == id && now.details == Details::asked) {
            now.details = Details::refused;
            now.detailsProblem = "cancelled";
            changed(site, AccountChange::editor);
        }
    };
    const std::optional<std::string> problem =
        services_.outbox.start(site,
                               {.commands = {Kind::detailsCommand(session(site).*Kind::table, id)},
                                .wish = std::string(Kind::noun),
                                .title = "read " + shownName(name),
                                .accounts = {name}},
                               ended);
    view.details = problem ? Details::refused : Details::asked;
    view.detailsProblem = problem.value_or(std::string());
    changed(site, AccountChange::editor);
}

template <typename Kind>
void AccountTable<Kind>::say(int site, const std::string& problem) const {
    services_.log.LogCommandResults(site, problem);
    services_.log.tell(site, problem);
}

template class AccountTable<UserKind>;
template class AccountTable<GroupKind>;

} // namespace corvel

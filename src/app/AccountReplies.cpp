#include "admin/AccountLists.h"
#include "app/AccountTable.h"
#include "common/Errors.h"

#include <tuple>
#include <utility>
#include <variant>

namespace corvel {

namespace {

// Everything of a record that its row shows.
auto shownIn(const clsUser& user) {
    return std::tuple(user.sName, user.sStdGroup, user.sFlags);
}
auto shownIn(const clsGroup& group) {
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

template <typename Kind>
ReplyReader AccountTable<Kind>::beginTable(const ReplyServices& /*services*/, int site,
                                           SiteSession& /*session*/) {
    return TableReader<Record>(site);
}

template <typename Kind>
ReplyReader AccountTable<Kind>::beginDetails(const ReplyServices& /*services*/, int /*site*/,
                                             SiteSession& session) {
    const Record* const record = findRecord<Kind>(session, session.current.recordId);
    return DetailsReader<Record>(record == nullptr ? Record() : *record);
}

template <typename Kind>
void AccountTable<Kind>::tableReply(const ReplyServices& services, Reply& reply) {
    AccountView& view = reply.session.*Kind::view;
    auto read = std::get<TableReader<Record>>(reply.reader).take();
    reply.session.*Kind::table = std::move(read.table);
    view.rows = orderedRows(reply.session.*Kind::table, view.order);
    view.isRead = true;
    view.added.clear();
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
void AccountTable<Kind>::detailsReply(const ReplyServices& services, Reply& reply) {
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
    const auto before = shownIn(*record);
    auto& read = std::get<DetailsReader<Record>>(reply.reader);
    *record = std::move(read.record());
    if (read.problem()) {
        isOver(Details::refused, describe(*read.problem()));
        throw ParseError(*read.problem());
    }
    record->got_info = true;
    if (before != shownIn(*record)) {
        view.rows = orderedRows(reply.session.*Kind::table, view.order);
        if (const auto draft = view.drafts.find(record->*Kind::id); draft != view.drafts.end()) {
            draft->second.sName = record->sName;
        }
        services.views.accountsChanged(reply.site, Kind::accounts, AccountChange::record);
    }
    isOver(Details::known, {});
}

template ReplyReader AccountTable<UserKind>::beginTable(const ReplyServices&, int, SiteSession&);
template ReplyReader AccountTable<UserKind>::beginDetails(const ReplyServices&, int, SiteSession&);
template void AccountTable<UserKind>::tableReply(const ReplyServices&, Reply&);
template void AccountTable<UserKind>::detailsReply(const ReplyServices&, Reply&);
template ReplyReader AccountTable<GroupKind>::beginTable(const ReplyServices&, int, SiteSession&);
template ReplyReader AccountTable<GroupKind>::beginDetails(const ReplyServices&, int, SiteSession&);
template void AccountTable<GroupKind>::tableReply(const ReplyServices&, Reply&);
template void AccountTable<GroupKind>::detailsReply(const ReplyServices&, Reply&);

} // namespace corvel

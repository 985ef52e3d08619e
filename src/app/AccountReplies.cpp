#include "app/AccountReplies.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace corvel {

namespace {

template <typename Record>
void takeTable(const ReplyServices& services, const Reply& reply, TableReply<std::vector<Record>> read,
               std::int16_t Record::*id, std::vector<Record>& table, TableView& view) {
    table = std::move(read.table);
    view.rows = orderedRows(table, view.order, reply.session.encoding);
    view.isRead = true;
    view.problem = isSuccess(reply) ? std::string_view() : reply.lastLine;
    if (view.currentId && std::ranges::find(table, *view.currentId, id) == table.end()) {
        view.currentId.reset();
    }
    if (const std::optional<std::string> message = badLinesMessage(read.bad)) {
        reportProblem(services, reply, *message);
    }
}

// Where the record that the command asked about is now: a reload may have moved it. -1 where the table does
// not have it any more.
template <typename Record>
int askedPlace(const Reply& reply, const std::vector<Record>& table, std::int16_t Record::*id) {
    const auto found = isPlaceholder(table.front()) || !reply.command.recordId
                           ? table.end()
                           : std::ranges::find(table, *reply.command.recordId, id);
    return found == table.end() ? -1 : static_cast<int>(found - table.begin());
}

// The status bar shows what the server says instead of details.
void showRefusal(const ReplyServices& services, const Reply& reply) {
    reply.session.lastErrorLine = reply.lastLine;
    services.views.lastErrorChanged(reply.site);
}

} // namespace

void userTableReply(const ReplyServices& services, const Reply& reply) {
    takeTable(services, reply, ParseUserTable(reply.site, reply.lines), &clsUser::iUID, reply.session.Users,
              reply.session.userView);
    services.views.usersChanged(reply.site);
}

void groupTableReply(const ReplyServices& services, const Reply& reply) {
    takeTable(services, reply, ParseGroupTable(reply.site, reply.lines), &clsGroup::iGID,
              reply.session.Groups, reply.session.groupView);
    services.views.groupsChanged(reply.site);
}

void userFileReply(const ReplyServices& services, const Reply& reply) {
    if (!isSuccess(reply)) {
        showRefusal(services, reply);
        return;
    }
    std::vector<clsUser>& users = reply.session.Users;
    const int place = askedPlace(reply, users, &clsUser::iUID);
    if (place < 0) {
        reportProblem(services, reply, "the user is not in the table any more");
        return;
    }
    users[static_cast<std::size_t>(place)].ParseUserFile(reply.lines);
    services.views.userShown(reply.site, place);
}

void groupFileReply(const ReplyServices& services, const Reply& reply) {
    if (!isSuccess(reply)) {
        showRefusal(services, reply);
        return;
    }
    std::vector<clsGroup>& groups = reply.session.Groups;
    const int place = askedPlace(reply, groups, &clsGroup::iGID);
    if (place < 0) {
        reportProblem(services, reply, "the group is not in the table any more");
        return;
    }
    groups[static_cast<std::size_t>(place)].ParseGroupFile(reply.lines);
    services.views.groupShown(reply.site, place);
}

} // namespace corvel

#include "app/AccountReplies.h"

#include "common/Numbers.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace corvel {

namespace {

bool isSuccess(const Reply& reply) {
    return reply.code >= 200 && reply.code <= 299;
}

template <typename Record>
void takeTable(const ReplyServices& services, const Reply& reply, TableReply<std::vector<Record>> read,
               std::int16_t Record::*id, std::vector<Record>& table, TableView& view) {
    table = std::move(read.table);
    view.rows = orderedRows(table, view.order, reply.session.encoding);
    view.problem = isSuccess(reply) ? std::string_view() : reply.lastLine;
    if (view.currentId && std::ranges::find(table, *view.currentId, id) == table.end()) {
        view.currentId.reset();
    }
    if (const std::optional<std::string> message = badLinesMessage(read.bad)) {
        reportProblem(services, reply, *message);
    }
}

// The record that the command asked about, or null when the table does not have it in that place any more: a
// reload may have overtaken the request.
template <typename Record>
Record* askedRecord(const Reply& reply, std::vector<Record>& table, std::int16_t Record::*id) {
    const auto index = static_cast<std::size_t>(reply.session.iCurTag);
    if (reply.session.iCurTag < 0 || index >= table.size() || isPlaceholder(table[index])) {
        return nullptr;
    }
    const std::string& command = reply.session.sCurCommand;
    const std::string_view asked = std::string_view(command).substr(command.rfind(' ') + 1);
    return isNumber(asked) && tryInt16(asked) != table[index].*id ? nullptr : &table[index];
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
        return;
    }
    if (clsUser* const user = askedRecord(reply, reply.session.Users, &clsUser::iUID)) {
        user->ParseUserFile(reply.lines);
        services.views.userShown(reply.site, reply.session.iCurTag);
    } else {
        reportProblem(services, reply, "the user is not in the table any more");
    }
}

void groupFileReply(const ReplyServices& services, const Reply& reply) {
    if (!isSuccess(reply)) {
        return;
    }
    if (clsGroup* const group = askedRecord(reply, reply.session.Groups, &clsGroup::iGID)) {
        group->ParseGroupFile(reply.lines);
        services.views.groupShown(reply.site, reply.session.iCurTag);
    } else {
        reportProblem(services, reply, "the group is not in the table any more");
    }
}

} // namespace corvel

#include "admin/TableCommands.h"

#include "common/Text.h"

#include <limits>
#include <utility>

namespace corvel {

namespace {

std::int16_t tagOf(int index) {
    return index > std::numeric_limits<std::int16_t>::max() ? std::int16_t{-1}
                                                            : static_cast<std::int16_t>(index);
}

} // namespace

Command userTableCommand() {
    return {"SITE CorvelExt usertable", true, handler::userTable, 0};
}

Command groupTableCommand() {
    return {"SITE CorvelExt grouptable", true, handler::groupTable, 0};
}

Command userFileCommand(const UserTable& users, std::int16_t uid) {
    return {"SITE CorvelExt userfile " + std::to_string(uid), true, handler::userFile,
            tagOf(FindUserIndexByUID(users, uid)), uid};
}

Command groupFileCommand(const GroupTable& groups, std::int16_t gid) {
    return {"SITE CorvelExt groupfile " + std::to_string(gid), true, handler::groupFile,
            tagOf(FindGroupIndexByGID(groups, gid)), gid};
}

std::string deleteUserQuestion(std::string_view userName, std::string_view groupName) {
    return "Are u sure u want to delete this user:\r\n" + std::string(userName) + "@" +
           std::string(groupName);
}

Command deleteUserCommand(std::string_view userName) {
    return userChange("SITE DELUSER " + std::string(userName));
}

std::string deleteGroupQuestion(std::string_view groupName) {
    return "Are u sure u want to delete this group:\r\n" + std::string(groupName) +
           "\r\n\r\nNote: make sure the group has no members, otherwise it can not be deleted";
}

Command deleteGroupCommand(std::string_view groupName) {
    return groupChange("SITE GRPDEL " + std::string(groupName));
}

Command userChange(std::string line) {
    return {std::move(line), false, handler::userChange, 0};
}

Command groupChange(std::string line) {
    return {std::move(line), false, handler::groupChange, 0};
}

} // namespace corvel

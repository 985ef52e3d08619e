#pragma once

#include "admin/mdlUsersGroups.h"
#include "common/Command.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// What the users' and groups' lists send and ask. Names are the server's bytes.

Command userTableCommand();
Command groupTableCommand();

// Asks for the details of the record with the id; index is its place in the table, -1 if it has none there. A
// place that no tag can hold counts as none, so that its reply is reported instead of filling another record.
Command userFileCommand(std::int16_t uid, int index);
Command groupFileCommand(std::int16_t gid, int index);

// What a click on the row with the id sends: nothing where the table's record has its details already.
std::optional<Command> openUserCommand(const UserTable& users, std::int16_t uid);
std::optional<Command> openGroupCommand(const GroupTable& groups, std::int16_t gid);

// The question before an account (a group) is deleted, and the command after a yes.
std::string deleteUserQuestion(std::string_view userName, std::string_view groupName);
Command deleteUserCommand(std::string_view userName);
std::string deleteGroupQuestion(std::string_view groupName);
Command deleteGroupCommand(std::string_view groupName);

// A change of an account (of a group), shown on the console and in the command results.
Command userChange(std::string line);
Command groupChange(std::string line);

} // namespace corvel

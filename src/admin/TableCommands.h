#pragma once

#include "admin/mdlUsersGroups.h"
#include "common/Command.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvel {

// What the users' and groups' lists send and ask. Names are the server's bytes.

Command userTableCommand();
Command groupTableCommand();

// Asks for the details of the record with the id. The tag is its place in the table, -1 where it has none or
// one that no tag can hold.
Command userFileCommand(const UserTable& users, std::int16_t uid);
Command groupFileCommand(const GroupTable& groups, std::int16_t gid);

// The question before an account (a group) is deleted, and the command after a yes.
std::string deleteUserQuestion(std::string_view userName, std::string_view groupName);
Command deleteUserCommand(std::string_view userName);
std::string deleteGroupQuestion(std::string_view groupName);
Command deleteGroupCommand(std::string_view groupName);

// A change of an account (of a group), shown on the console and in the command results.
Command userChange(std::string line);
Command groupChange(std::string line);

} // namespace corvel

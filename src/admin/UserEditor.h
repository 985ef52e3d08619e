#pragma once

#include "admin/UserForm.h"
#include "common/Command.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What the user editor's buttons send. user is the record of the account in the table; a change names the
// account as the record does. Whoever sends it has the userfile read behind it.

// The question that a change of flags needs where one of the two has the Master flag; its default answer is
// no. Nothing where the flags are the same or neither has it.
std::optional<std::string> masterQuestion(std::string_view oldFlags, std::string_view newFlags);

// One command for each difference between form and user. sendFlags: whether changed flags may go out, the
// answer to masterQuestion or true where it asks nothing.
std::vector<Command> saveUserCommands(const clsUser& user, const UserForm& form, bool sendFlags);

// Adds the mask in txtUserIP to the account, or takes it away.
Command addMaskCommand(const clsUser& user, const UserForm& form);
Command deleteMaskCommand(const clsUser& user, const UserForm& form);

// The title and prompt of the box that asks for a new password; nothing where no name is shown.
struct PasswordPrompt {
    std::string sTitle;
    std::string sPrompt;
};
std::optional<PasswordPrompt> passwordPrompt(const UserForm& form);

// Sets the password that was typed into that box, and is not empty, for the account named in txtUserName. The
// password goes out in clear.
Command passwordCommand(const UserForm& form, std::string_view password);

} // namespace corvel

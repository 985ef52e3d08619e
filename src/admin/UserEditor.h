#pragma once

#include "admin/UserForm.h"
#include "common/Command.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What the user editor's buttons send. user is the record of the account in the table, index its place there;
// every change names the account as the record does, and ends with a request for its userfile.

// The question that a change of flags needs where one of the two has the Master flag; its default answer is
// no. Nothing where the flags are the same or neither has it.
std::optional<std::string> masterQuestion(std::string_view oldFlags, std::string_view newFlags);

// One command for each difference between form and user. sendFlags: whether changed flags may go out, the
// answer to masterQuestion or true where it asks nothing.
std::vector<Command> saveUserCommands(const clsUser& user, const UserForm& form, bool sendFlags, int index);

// Adds the mask in txtUserIP to the account, or takes it away.
std::vector<Command> addMaskCommands(const clsUser& user, const UserForm& form, int index);
std::vector<Command> deleteMaskCommands(const clsUser& user, const UserForm& form, int index);

// The title and prompt of the box that asks for a new password; nothing where no name is shown.
struct PasswordPrompt {
    std::string sTitle;
    std::string sPrompt;
};
std::optional<PasswordPrompt> passwordPrompt(const UserForm& form);

// Sets the password that was typed into that box for the account named in txtUserName; an empty password
// sends nothing. The password goes out in clear.
std::vector<Command> passwordCommands(const clsUser& user, const UserForm& form, std::string_view password,
                                      int index);

} // namespace corvel

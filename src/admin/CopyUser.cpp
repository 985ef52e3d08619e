#include "admin/CopyUser.h"

#include "admin/AddUser.h"
#include "admin/TableCommands.h"
#include "common/Text.h"

namespace corvel {

CopyUserForm copyUserForm(const clsUser& user) {
    return {user.sName, std::to_string(user.iUID), ""};
}

bool isCopyNameKey(char character) {
    return std::string_view("[] ").find(character) == std::string_view::npos;
}

std::string withoutBlanks(std::string_view name) {
    return replaceAll(name, " ", "");
}

std::optional<std::string> copyUserProblem(const CopyUserForm& form, const UserTable& users) {
    const std::string name = withoutBlanks(form.txtNewUsername);
    if (name.empty()) {
        return std::string(invalidUserName);
    }
    if (findUserByName(users, name) != nullptr) {
        return "This user already exists !";
    }
    return std::nullopt;
}

Command copyUserCommand(const CopyUserForm& form) {
    return userChange("SITE CorvelExt copyuser " + form.txtSourceUID + " " +
                      withoutBlanks(form.txtNewUsername));
}

} // namespace corvel

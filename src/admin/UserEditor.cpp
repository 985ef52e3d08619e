#include "admin/UserEditor.h"

#include "admin/TableCommands.h"
#include "common/Numbers.h"

#include <array>
#include <cstdint>

namespace corvel {

namespace {

struct TextProperty {
    std::string UserForm::*box;
    std::string clsUser::*field;
    const char* property;
};

constexpr std::array<TextProperty, 3> textProperties{{
    {&UserForm::txtUserTagLine, &clsUser::sTagline, "tagline"},
    {&UserForm::txtUserVFS, &clsUser::sVFSFile, "vfsfile"},
    {&UserForm::txtUserHomePath, &clsUser::sHomePath, "homedir"},
}};

struct LoginProperty {
    std::int16_t clsUser::*field;
    const char* service;
};

// In the order of the boxes.
constexpr std::array<LoginProperty, 3> loginProperties{{
    {&clsUser::iLoginsFTP, "ftp"},
    {&clsUser::iLoginsTelnet, "telnet"},
    {&clsUser::iLoginsHTTP, "http"},
}};

bool differs(std::string_view typed, double number) {
    return leadingNumber(typed) != number;
}

void appendLogins(std::vector<Command>& commands, const clsUser& user, const UserForm& form) {
    for (std::size_t i = 0; i < loginProperties.size(); ++i) {
        const std::string& typed = form.txtUserLogins[i];
        if (differs(typed, user.*loginProperties[i].field)) {
            commands.push_back(userChange("SITE change " + user.sName + " logins " + wholeNumberText(typed) +
                                          " " + loginProperties[i].service));
        }
    }
}

} // namespace

std::optional<std::string> masterQuestion(std::string_view oldFlags, std::string_view newFlags) {
    if (oldFlags == newFlags) {
        return std::nullopt;
    }
    if (oldFlags.find('M') != std::string_view::npos) {
        return "You are changing the flags of a Master user (M). Are u sure u want to continue?";
    }
    if (newFlags.find('M') != std::string_view::npos) {
        return "You are giving this user the Master flag (M). Are u sure u want to continue?";
    }
    return std::nullopt;
}

// A rename goes out before limits and logins, which still name the account as it was: the server is told in
// the order in which its administrators expect it, and the userfile read behind it shows what became of it.
std::vector<Command> saveUserCommands(const clsUser& user, const UserForm& form, bool sendFlags) {
    std::vector<Command> commands;
    const std::string change = "SITE change " + user.sName + " ";
    if (sendFlags && form.txtUserFlags != user.sFlags) {
        commands.push_back(
            userChange("SITE CorvelExt setflags " + std::to_string(user.iUID) + " " + form.txtUserFlags));
    }
    for (const TextProperty& row : textProperties) {
        if (form.*row.box != user.*row.field) {
            commands.push_back(userChange(change + row.property + " " + form.*row.box));
        }
    }
    if (form.txtUserName != user.sName) {
        commands.push_back(userChange("SITE renuser " + user.sName + " " + form.txtUserName));
    }
    if (differs(form.txtUserBwUp, user.iBWLimitUp) || differs(form.txtUserBwDn, user.iBWLimitDn)) {
        commands.push_back(userChange(change + "speedlimit " + form.txtUserBwDn + " " + form.txtUserBwUp));
    }
    appendLogins(commands, user, form);
    return commands;
}

Command addMaskCommand(const clsUser& user, const UserForm& form) {
    return userChange("SITE addip " + user.sName + " " + form.txtUserIP);
}

Command deleteMaskCommand(const clsUser& user, const UserForm& form) {
    return userChange("SITE delip " + user.sName + " " + form.txtUserIP);
}

std::optional<PasswordPrompt> passwordPrompt(const UserForm& form) {
    if (form.txtUserName.empty()) {
        return std::nullopt;
    }
    return PasswordPrompt{"Change user password",
                          "Enter new password for " + form.txtUserName + "@" + form.txtUserGroup};
}

Command passwordCommand(const UserForm& form, std::string_view password) {
    return userChange("SITE change " + form.txtUserName + " passwd " + std::string(password));
}

} // namespace corvel

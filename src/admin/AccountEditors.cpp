#include "admin/AccountEditors.h"

#include "common/Numbers.h"

#include <cstdint>
#include <unordered_set>

namespace corvel {

namespace {

// Whole megabytes in an amount of credits, rounded toward minus infinity.
std::int64_t wholeMegabytes(std::int64_t credits) {
    constexpr std::int64_t perMegabyte = 10240000; // 1024, in 1/10000
    return credits / perMegabyte - (credits % perMegabyte < 0 ? 1 : 0);
}

// A row for each of ids; names, those of their table; administrators, the ids of those who are.
std::vector<MemberRow> memberRows(const std::vector<std::int16_t>& ids,
                                  const std::unordered_map<std::int16_t, std::string_view>& names,
                                  std::string_view unknown, const std::vector<std::int16_t>& administrators) {
    const std::unordered_set<std::int16_t> administering(administrators.begin(), administrators.end());
    std::vector<MemberRow> rows;
    rows.reserve(ids.size());
    for (const std::int16_t id : ids) {
        const auto name = names.find(id);
        rows.push_back({std::to_string(id), std::string(name == names.end() ? unknown : name->second),
                        administering.contains(id) ? "Yes" : "No"});
    }
    return rows;
}

struct TextProperty {
    std::string UserForm::*box;
    std::string UserDetails::*field;
    const char* property;
};

constexpr std::array<TextProperty, 3> textProperties{{
    {&UserForm::txtUserTagLine, &UserDetails::sTagline, "tagline"},
    {&UserForm::txtUserVFS, &UserDetails::sVFSFile, "vfsfile"},
    {&UserForm::txtUserHomePath, &UserDetails::sHomePath, "homedir"},
}};

struct LoginProperty {
    std::int16_t UserDetails::*field;
    const char* service;
};

// In the order of the boxes.
constexpr std::array<LoginProperty, 3> loginProperties{{
    {&UserDetails::iLoginsFTP, "ftp"},
    {&UserDetails::iLoginsTelnet, "telnet"},
    {&UserDetails::iLoginsHTTP, "http"},
}};

bool differs(std::string_view typed, double number) {
    return leadingNumber(typed) != number;
}

void appendLogins(std::vector<Command>& commands, const clsUser& user, const UserForm& form) {
    for (std::size_t i = 0; i < loginProperties.size(); ++i) {
        const std::string& typed = form.txtUserLogins[i];
        if (differs(typed, user.details().*loginProperties[i].field)) {
            commands.push_back(userChange("SITE change " + user.sName + " logins " + wholeNumberText(typed) +
                                          " " + loginProperties[i].service));
        }
    }
}

} // namespace

std::string& UserForm::box(std::size_t number) {
    static constexpr std::array<std::string UserForm::*, firstLoginsBox> members = {
        &UserForm::txtUserName,     &UserForm::txtUserFlags, &UserForm::txtUserTagLine,
        &UserForm::txtUserHomePath, &UserForm::txtUserVFS,   &UserForm::txtUserBwUp,
        &UserForm::txtUserBwDn};
    return number < members.size() ? this->*members[number] : txtUserLogins.at(number - firstLoginsBox);
}

std::vector<UserSectionRow> sectionRows(const clsUser& user) {
    const UserDetails& details = user.details();
    std::vector<UserSectionRow> rows;
    for (std::size_t section = 0; section < UserDetails::sectionCount; ++section) {
        rows.push_back({std::to_string(section), std::to_string(details.ratios[section]),
                        std::to_string(wholeMegabytes(details.credits[section]))});
    }
    return rows;
}

UserForm InfoToForm(const clsUser& user, const GroupTable& groups) {
    const UserDetails& details = user.details();
    UserForm form;
    form.txtUserUID = std::to_string(user.iUID);
    form.txtUserName = user.sName;
    form.txtUserGroup = user.sStdGroup;
    form.txtUserFlags = user.sFlags;
    form.txtUserTagLine = details.sTagline;
    form.txtUserHomePath = details.sHomePath;
    form.txtUserVFS = details.sVFSFile;
    form.txtUserBwDn = std::to_string(details.iBWLimitDn);
    form.txtUserBwUp = std::to_string(details.iBWLimitUp);
    form.txtUserLogins = {std::to_string(details.iLoginsFTP), std::to_string(details.iLoginsTelnet),
                          std::to_string(details.iLoginsHTTP)};
    form.lstUserIP = details.ips;
    form.lvwUserGroups =
        memberRows(details.groups, namesById(groups, &clsGroup::iGID), unknownGID, details.admingroups);
    form.lvwUserSections = sectionRows(user);
    return form;
}

std::string creditsOfMegabytes(std::string_view megabytes) {
    return wholeNumberText(megabytes, 1024);
}

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
    const UserDetails& details = user.details();
    const std::string change = "SITE change " + user.sName + " ";
    if (sendFlags && form.txtUserFlags != user.sFlags) {
        commands.push_back(
            userChange("SITE CorvelExt setflags " + std::to_string(user.iUID) + " " + form.txtUserFlags));
    }
    for (const TextProperty& row : textProperties) {
        if (form.*row.box != details.*row.field) {
            commands.push_back(userChange(change + row.property + " " + form.*row.box));
        }
    }
    if (form.txtUserName != user.sName) {
        commands.push_back(userChange("SITE renuser " + user.sName + " " + form.txtUserName));
    }
    if (differs(form.txtUserBwUp, details.iBWLimitUp) || differs(form.txtUserBwDn, details.iBWLimitDn)) {
        commands.push_back(userChange(change + "speedlimit " + form.txtUserBwDn + " " + form.txtUserBwUp));
    }
    appendLogins(commands, user, form);
    return commands;
}

Command addMaskCommand(const clsUser& user, std::string_view mask) {
    return userChange("SITE addip " + user.sName + " " + std::string(mask));
}

Command deleteMaskCommand(const clsUser& user, std::string_view mask) {
    return userChange("SITE delip " + user.sName + " " + std::string(mask));
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

std::string& GroupForm::box(std::size_t number) {
    static constexpr std::array<std::string GroupForm::*, boxCount> members = {
        &GroupForm::txtGroupname, &GroupForm::txtGroupdescr, &GroupForm::txtGroupGroupslots,
        &GroupForm::txtGroupLeechslots, &GroupForm::txtGroupVFS};
    return this->*members.at(number);
}

GroupForm InfoToForm(const clsGroup& group, const UserTable& users) {
    GroupForm form;
    form.txtGroupGID = std::to_string(group.iGID);
    form.txtGroupname = group.sName;
    form.txtGroupdescr = group.sDescription;
    form.txtGroupGroupslots = std::to_string(group.iGroupSlots);
    form.txtGroupLeechslots = std::to_string(group.iLeechSlots);
    form.txtGroupVFS = group.sVFSFile;
    form.lvwGroupMembers =
        memberRows(group.members, namesById(users, &clsUser::iUID), unknownUID, group.gadmins);
    form.lblGroupMembers = std::to_string(form.lvwGroupMembers.size());
    return form;
}

std::vector<Command> saveGroupCommands(const clsGroup& group, const GroupForm& form) {
    std::vector<Command> commands;
    const std::string change = "SITE change " + group.sName + " ";
    if (differs(form.txtGroupGroupslots, group.iGroupSlots) ||
        differs(form.txtGroupLeechslots, group.iLeechSlots)) {
        commands.push_back(groupChange(change + "groupslots " + wholeNumberText(form.txtGroupGroupslots) +
                                       " " + wholeNumberText(form.txtGroupLeechslots)));
    }
    if (form.txtGroupVFS != group.sVFSFile) {
        commands.push_back(groupChange(change + "groupvfsfile " + form.txtGroupVFS));
    }
    if (form.txtGroupdescr != group.sDescription) {
        commands.push_back(groupChange(change + "groupdescription " + form.txtGroupdescr));
    }
    if (form.txtGroupname != group.sName) {
        commands.push_back(groupChange("SITE grpren " + group.sName + " " + form.txtGroupname));
    }
    return commands;
}

} // namespace corvel

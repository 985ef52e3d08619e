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

bool differs(std::string_view typed, double number) {
    return leadingNumber(typed) != number;
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
    const auto addIf = [&commands](bool isChanged, const std::string& line) {
        if (isChanged) {
            commands.push_back(userChange(line));
        }
    };
    const UserDetails& details = user.details();
    const std::string change = "SITE change " + user.sName + " ";
    addIf(sendFlags && form.txtUserFlags != user.sFlags,
          "SITE CorvelExt setflags " + std::to_string(user.iUID) + " " + form.txtUserFlags);
    addIf(form.txtUserTagLine != details.sTagline, change + "tagline " + form.txtUserTagLine);
    addIf(form.txtUserVFS != details.sVFSFile, change + "vfsfile " + form.txtUserVFS);
    addIf(form.txtUserHomePath != details.sHomePath, change + "homedir " + form.txtUserHomePath);
    addIf(form.txtUserName != user.sName, "SITE renuser " + user.sName + " " + form.txtUserName);
    addIf(differs(form.txtUserBwUp, details.iBWLimitUp) || differs(form.txtUserBwDn, details.iBWLimitDn),
          change + "speedlimit " + form.txtUserBwDn + " " + form.txtUserBwUp);
    const auto addLogins = [&](const std::string& typed, std::int16_t number, const char* service) {
        addIf(differs(typed, number), change + "logins " + wholeNumberText(typed) + service);
    };
    addLogins(form.txtUserLogins[0], details.iLoginsFTP, " ftp");
    addLogins(form.txtUserLogins[1], details.iLoginsTelnet, " telnet");
    addLogins(form.txtUserLogins[2], details.iLoginsHTTP, " http");
    return commands;
}

Command addMaskCommand(const clsUser& user, std::string_view mask) {
    return userChange("SITE addip " + user.sName + " " + std::string(mask));
}

Command deleteMaskCommand(const clsUser& user, std::string_view mask) {
    return userChange("SITE delip " + user.sName + " " + std::string(mask));
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
    const GroupDetails& details = group.details();
    GroupForm form;
    form.txtGroupGID = std::to_string(group.iGID);
    form.txtGroupname = group.sName;
    form.txtGroupdescr = details.sDescription;
    form.txtGroupGroupslots = std::to_string(details.iGroupSlots);
    form.txtGroupLeechslots = std::to_string(details.iLeechSlots);
    form.txtGroupVFS = details.sVFSFile;
    form.lvwGroupMembers =
        memberRows(details.members, namesById(users, &clsUser::iUID), unknownUID, details.gadmins);
    form.lblGroupMembers = std::to_string(form.lvwGroupMembers.size());
    return form;
}

std::vector<Command> saveGroupCommands(const clsGroup& group, const GroupForm& form) {
    std::vector<Command> commands;
    const GroupDetails& details = group.details();
    const std::string change = "SITE change " + group.sName + " ";
    const auto addIf = [&commands](bool isChanged, const std::string& line) {
        if (isChanged) {
            commands.push_back(groupChange(line));
        }
    };
    addIf(differs(form.txtGroupGroupslots, details.iGroupSlots) ||
              differs(form.txtGroupLeechslots, details.iLeechSlots),
          change + "groupslots " + wholeNumberText(form.txtGroupGroupslots) + " " +
              wholeNumberText(form.txtGroupLeechslots));
    addIf(form.txtGroupVFS != details.sVFSFile, change + "groupvfsfile " + form.txtGroupVFS);
    addIf(form.txtGroupdescr != details.sDescription, change + "groupdescription " + form.txtGroupdescr);
    addIf(form.txtGroupname != group.sName, "SITE grpren " + group.sName + " " + form.txtGroupname);
    return commands;
}

} // namespace corvel

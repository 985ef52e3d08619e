#include "admin/UserForm.h"

#include "admin/IdLookup.h"
#include "common/Numbers.h"

#include <cstddef>
#include <cstdint>

namespace corvel {

namespace {

// Whole megabytes in an amount of credits, rounded toward minus infinity.
std::int64_t wholeMegabytes(std::int64_t credits) {
    constexpr std::int64_t perMegabyte = 10240000; // 1024, in 1/10000
    return credits / perMegabyte - (credits % perMegabyte < 0 ? 1 : 0);
}

std::vector<UserGroupRow> groupRows(const clsUser& user, const GroupTable& groups) {
    const IdLookup<clsGroup> lookup(groups, &clsGroup::iGID);
    const IdSet administered(user.admingroups());
    std::vector<UserGroupRow> rows;
    rows.reserve(user.groups().size());
    for (const std::int16_t gid : user.groups()) {
        const clsGroup* group = lookup.find(gid);
        rows.push_back({std::to_string(gid), group == nullptr ? std::string(unknownGID) : group->sName,
                        administered.contains(gid) ? "Yes" : "No"});
    }
    return rows;
}

std::vector<UserSectionRow> sectionRows(const clsUser& user) {
    std::vector<UserSectionRow> rows;
    rows.reserve(clsUser::sectionCount);
    for (std::size_t section = 0; section < clsUser::sectionCount; ++section) {
        rows.push_back({std::to_string(section), std::to_string(user.ratios()[section]),
                        std::to_string(wholeMegabytes(user.credits()[section]))});
    }
    return rows;
}

} // namespace

UserForm InfoToForm(const clsUser& user, const GroupTable& groups) {
    UserForm form;
    form.txtUserUID = std::to_string(user.iUID);
    form.txtUserName = user.sName;
    form.txtUserGroup = user.sStdGroup;
    form.txtUserFlags = user.sFlags;
    form.txtUserTagLine = user.sTagline;
    form.txtUserHomePath = user.sHomePath;
    form.txtUserVFS = user.sVFSFile;
    form.txtUserBwDn = std::to_string(user.iBWLimitDn);
    form.txtUserBwUp = std::to_string(user.iBWLimitUp);
    form.txtUserLogins = {std::to_string(user.iLoginsFTP), std::to_string(user.iLoginsTelnet),
                          std::to_string(user.iLoginsHTTP)};
    form.lstUserIP = user.ips();
    form.lvwUserGroups = groupRows(user, groups);
    form.lvwUserSections = sectionRows(user);
    return form;
}

std::string creditsOfMegabytes(std::string_view megabytes) {
    return wholeNumberText(megabytes, 1024);
}

} // namespace corvel

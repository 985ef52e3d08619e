#include "admin/qt/AccountDialogs.h"

#include "admin/qt/frmAddGroup.h"
#include "admin/qt/frmAddUser.h"
#include "admin/qt/frmChangeUserGroups.h"
#include "admin/qt/frmCopyUser.h"
#include "admin/qt/frmUserSections.h"

#include <optional>
#include <string>

namespace corvel {

namespace {

void open(QDialog* dialog) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace

void openAddUser(mdlMain& program, int site, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    open(new frmAddUser(
        {addUserForm(session.Groups), session.encoding},
        [&program, &session, site](const AddUserForm& form) {
            const std::optional<std::string> problem = addUserProblem(form, session.Users);
            return problem ? problem : program.admin().startSequence(site, addUserSequence(form));
        },
        parent));
}

void openAddGroup(mdlMain& program, int site, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    open(new frmAddGroup(
        session.encoding,
        [&program, &session, site](const AddGroupForm& form) {
            const std::optional<std::string> problem = addGroupProblem(form, session.Groups);
            return problem ? problem : program.admin().startSequence(site, addGroupSequence(form));
        },
        parent));
}

void openCopyUser(mdlMain& program, int site, const clsUser& user, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    open(new frmCopyUser(
        {copyUserForm(user), session.encoding},
        [&program, &session, site](const CopyUserForm& form) {
            const std::optional<std::string> problem = copyUserProblem(form, session.Users);
            return problem ? problem : program.admin().copyUser(site, form);
        },
        parent));
}

void openUserGroups(mdlMain& program, int site, const clsUser& user, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    open(new frmChangeUserGroups(
        {user.sName, changeUserGroupsForm(user, session.Groups), session.encoding},
        [&program, site, uid = user.iUID](const ChangeUserGroupsForm& form) {
            return program.admin().changeUserGroups(site, uid, form);
        },
        parent));
}

void openUserSections(mdlMain& program, int site, const clsUser& user, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    const std::vector<UserSectionRow> rows = InfoToForm(user, session.Groups).lvwUserSections;
    open(new frmUserSections(
        {user.sName, sectionsForm(rows), session.encoding},
        [&program, site, uid = user.iUID, rows](const SectionsForm& form) {
            return program.admin().changeSections(site, uid, rows, form);
        },
        parent));
}

} // namespace corvel

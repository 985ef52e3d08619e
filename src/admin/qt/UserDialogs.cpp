#include "admin/qt/UserDialogs.h"

#include "admin/qt/frmChangeUserGroups.h"
#include "admin/qt/frmUserSections.h"

namespace corvel {

namespace {

const clsUser& userAt(const SiteSession& session, int index) {
    return session.Users[static_cast<std::size_t>(index)];
}

void openDialog(QDialog* dialog) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace

void openUserGroups(mdlMain& program, int site, int index, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    const clsUser& user = userAt(session, index);
    const auto accept = [&program, site, uid = user.iUID](const ChangeUserGroupsForm& form) {
        return program.admin().changeUserGroups(site, uid, form);
    };
    openDialog(new frmChangeUserGroups(
        {user.sName, changeUserGroupsForm(user, session.Groups), session.encoding}, accept, parent));
}

void openUserSections(mdlMain& program, int site, int index, const UserForm& shown, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    const clsUser& user = userAt(session, index);
    const auto accept = [&program, site, uid = user.iUID,
                         rows = shown.lvwUserSections](const SectionsForm& form) {
        return program.admin().changeSections(site, uid, rows, form);
    };
    openDialog(new frmUserSections({user.sName, sectionsForm(shown.lvwUserSections), session.encoding},
                                   accept, parent));
}

} // namespace corvel

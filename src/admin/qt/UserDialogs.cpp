#include "admin/qt/UserDialogs.h"

#include "admin/ChangeUserGroups.h"
#include "admin/qt/frmChangeUserGroups.h"
#include "admin/qt/frmUserSections.h"
#include "admin/Sections.h"

#include <utility>
#include <vector>

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
    const auto accept = [&program, &session, site, uid = user.iUID](const ChangeUserGroupsForm& form) {
        const int found = FindUserIndexByUID(session.Users, uid);
        if (found >= 0) {
            program.admin().changeUser(site, uid, changeUserGroupsCommands(userAt(session, found), form));
        }
    };
    openDialog(new frmChangeUserGroups(
        {user.sName, changeUserGroupsForm(user, session.Groups), session.encoding}, accept, parent));
}

void openUserSections(mdlMain& program, int site, int index, const UserForm& shown, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    const clsUser& user = userAt(session, index);
    const auto accept = [&program, &session, site, uid = user.iUID,
                         rows = shown.lvwUserSections](const SectionsForm& form) {
        const int found = FindUserIndexByUID(session.Users, uid);
        if (found < 0) {
            return;
        }
        std::vector<Command> changes = saveSectionsCommands(userAt(session, found), rows, form);
        if (!changes.empty()) {
            program.admin().changeUser(site, uid, std::move(changes));
        }
    };
    openDialog(new frmUserSections({user.sName, sectionsForm(shown.lvwUserSections), session.encoding},
                                   accept, parent));
}

} // namespace corvel

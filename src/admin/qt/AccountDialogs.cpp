#include "admin/qt/AccountDialogs.h"

#include "admin/qt/frmAddGroup.h"
#include "admin/qt/frmAddUser.h"
#include "admin/qt/frmCopyUser.h"

#include <optional>
#include <string>

namespace corvel {

namespace {

void open(QDialog& dialog) {
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.open();
}

} // namespace

void openAddUser(mdlMain& program, int site, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    auto* const dialog = new frmAddUser(
        {addUserForm(session.Groups), session.encoding},
        [&program, &session, site](const AddUserForm& form) -> std::optional<std::string> {
            if (std::optional<std::string> problem = addUserProblem(form, session.Users)) {
                return problem;
            }
            return program.admin().startSequence(site, addUserSequence(form));
        },
        parent);
    open(*dialog);
}

void openAddGroup(mdlMain& program, int site, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    auto* const dialog = new frmAddGroup(
        session.encoding,
        [&program, &session, site](const AddGroupForm& form) -> std::optional<std::string> {
            if (std::optional<std::string> problem = addGroupProblem(form, session.Groups)) {
                return problem;
            }
            return program.admin().startSequence(site, addGroupSequence(form));
        },
        parent);
    open(*dialog);
}

void openCopyUser(mdlMain& program, int site, int index, QWidget* parent) {
    const SiteSession& session = program.site(site).session;
    if (index < 0 || static_cast<std::size_t>(index) >= rowCount(session.Users)) {
        return;
    }
    auto* const dialog = new frmCopyUser(
        {copyUserForm(session.Users[static_cast<std::size_t>(index)]), session.encoding},
        [&program, &session, site](const CopyUserForm& form) {
            const std::optional<std::string> problem = copyUserProblem(form, session.Users);
            return problem ? problem : program.admin().copyUser(site, form);
        },
        parent);
    open(*dialog);
}

} // namespace corvel

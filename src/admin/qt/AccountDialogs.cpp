#include "admin/qt/AccountDialogs.h"

#include "widgets/TextConversion.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QTimer>

namespace corvel {

namespace {

// A box for the name of a copied account: the keys for characters that no such name has do nothing.
class CopyNameEdit : public OneLineEdit {
  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (toCore(event->text()).find_first_of("[] ") == std::string::npos) {
            OneLineEdit::keyPressEvent(event);
        }
    }
};

// Opens a dialog for the site. send: gives why the form cannot be sent, or nothing when it was.
template <typename Dialog, typename Form, typename Send>
void open(mdlMain& program, int site, QWidget* parent, Form form, Send send) {
    const SiteSession& session = program.site(site).session;
    const auto accept = [&program, &session, site, send](const Form& filled) -> std::optional<std::string> {
        return send(program.admin(), session, site, filled);
    };
    openDialog(*new Dialog({std::move(form), &session.encoding}, accept, parent));
}

} // namespace

frmAddGroup::frmAddGroup(Opening opening, Accept accept, QWidget* parent)
    : FormDialog("frmAddGroup", tr("Add group"), std::move(opening), std::move(accept), parent) {
    auto* const layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    boxes_.addRow(*layout, form_.txtGroupname, "txtGroupname", tr("Group &name:"))
        ->setMinimumWidth(fontMetrics().averageCharWidth() * 32);
    boxes_.addRow(*layout, form_.txtGroupdescr, "txtGroupdescr", tr("&Description:"));
    setDigitsWide(
        *boxes_.addRow(*layout, form_.txtGroupGroupslots, "txtGroupGroupslots", tr("&Group slots:")), 6);
    setDigitsWide(
        *boxes_.addRow(*layout, form_.txtGroupLeechslots, "txtGroupLeechslots", tr("&Leech slots:")), 6);
    boxes_.addRow(*layout, form_.txtGroupVFS, "txtGroupVFS", tr("&VFS file:"));
    layout->addRow(buttons());
    boxes_.show();
}

frmCopyUser::frmCopyUser(Opening opening, Accept accept, QWidget* parent)
    : FormDialog("frmCopyUser", tr("Copy user"), std::move(opening), std::move(accept), parent),
      txtNewUsername_(new CopyNameEdit), tmrSetfocus_(new QTimer(this)) {
    auto* const layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    setShownOnly(*boxes_.addRow(*layout, form_.txtSourceUsername, "txtSourceUsername", tr("&Source user:")));
    setShownOnly(*boxes_.addRow(*layout, form_.txtSourceUID, "txtSourceUID", tr("Source &uid:")));
    txtNewUsername_->setMinimumWidth(fontMetrics().averageCharWidth() * 32);
    layout->addRow(labelFor(*txtNewUsername_, "txtNewUsername", tr("&New user name:")), txtNewUsername_);
    layout->addRow(buttons());
    boxes_.show();
    tmrSetfocus_->setObjectName(QStringLiteral("tmrSetfocus"));
    tmrSetfocus_->setSingleShot(true);
    connect(tmrSetfocus_, &QTimer::timeout, txtNewUsername_, [this] { txtNewUsername_->setFocus(); });
}

void frmCopyUser::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) {
        tmrSetfocus_->start(0);
    }
}

void frmCopyUser::collect() {
    form_.txtNewUsername = withoutBlanks(bytesOf(txtNewUsername_->text(), encoding()));
    txtNewUsername_->setText(textOf(form_.txtNewUsername));
}

frmChangeUserGroups::frmChangeUserGroups(Opening opening, Accept accept, QWidget* parent)
    : FormDialog("frmChangeUserGroups", {}, std::move(opening), std::move(accept), parent),
      lstGroups_(new SelectableList(form_.lstGroups)), lstGAdmin_(new SelectableList(form_.lstGAdmin)) {
    setWindowTitle(tr("Change groups - %1").arg(displayTextOf(form_.sUserName)));
    auto* const layout = new QGridLayout(this);
    layout->addWidget(labelFor(*lstGroups_, "lstGroups", tr("&Member of:")), 0, 0);
    layout->addWidget(labelFor(*lstGAdmin_, "lstGAdmin", tr("Group &admin of:")), 0, 1);
    layout->addWidget(lstGroups_, 1, 0);
    layout->addWidget(lstGAdmin_, 1, 1);
    layout->addWidget(buttons(), 2, 0, 1, 2);
    resize(fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 20);
}

void frmChangeUserGroups::collect() {
    form_.lstGroups = lstGroups_->entries();
    form_.lstGAdmin = lstGAdmin_->entries();
}

frmUserSections::frmUserSections(Opening opening, Accept accept, QWidget* parent)
    : FormDialog("frmUserSections", {}, std::move(opening), std::move(accept), parent) {
    setWindowTitle(tr("Sections - %1").arg(displayTextOf(form_.sUserName)));
    auto* const layout = new QGridLayout(this);
    layout->addWidget(new QLabel(tr("Section")), 0, 0);
    layout->addWidget(new QLabel(tr("Ratio")), 0, 1, Qt::AlignRight);
    layout->addWidget(new QLabel(tr("Credits (MB)")), 0, 2, Qt::AlignRight);
    layout->setColumnStretch(2, 1);
    const int sections = static_cast<int>(form_.lvwUserSections.size());
    for (int i = 0; i < sections; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const QString section = fromCore(form_.lvwUserSections[place].sSection);
        auto* const label = new QLabel(section);
        label->setObjectName(elementName("lbl", i));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        layout->addWidget(label, i + 1, 0);
        const auto add = [&](std::string& member, const char* name, const QString& accessibleName,
                             int column) {
            BytesEdit* const box = boxes_.add(member);
            box->setObjectName(elementName(name, i));
            box->setAccessibleName(accessibleName.arg(section));
            box->setAlignment(Qt::AlignRight);
            box->setSelectAllOnFocus(true);
            box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 12);
            layout->addWidget(box, i + 1, column);
            return box;
        };
        label->setBuddy(add(form_.txtRatio[place], "txtRatio", tr("Ratio of section %1"), 1));
        add(form_.txtCredits[place], "txtCredits", tr("Credits of section %1 in MB"), 2);
    }
    layout->setRowStretch(sections + 1, 1);
    layout->addWidget(buttons({"cmdSave", tr("Save")}), sections + 2, 0, 1, 3);
    boxes_.show();
}

void openAddUser(mdlMain& program, int site, QWidget* parent) {
    open<frmAddUser>(program, site, parent, addUserForm(program.site(site).session.Groups),
                     [](AdminActions& admin, const SiteSession& session, int of, const AddUserForm& form) {
                         const std::optional<std::string> problem = addUserProblem(form, session.Users);
                         return problem ? problem : admin.startSequence(of, addUserSequence(form));
                     });
}

void openAddGroup(mdlMain& program, int site, QWidget* parent) {
    open<frmAddGroup>(program, site, parent, AddGroupForm(),
                      [](AdminActions& admin, const SiteSession& session, int of, const AddGroupForm& form) {
                          const std::optional<std::string> problem = addGroupProblem(form, session.Groups);
                          return problem ? problem : admin.startSequence(of, addGroupSequence(form));
                      });
}

void openCopyUser(mdlMain& program, int site, const clsUser& user, QWidget* parent) {
    open<frmCopyUser>(program, site, parent, copyUserForm(user),
                      [](AdminActions& admin, const SiteSession& session, int of, const CopyUserForm& form) {
                          const std::optional<std::string> problem = copyUserProblem(form, session.Users);
                          return problem ? problem : admin.copyUser(of, form);
                      });
}

void openUserGroups(mdlMain& program, int site, const clsUser& user, QWidget* parent) {
    open<frmChangeUserGroups>(program, site, parent,
                              changeUserGroupsForm(user, program.site(site).session.Groups),
                              [uid = user.iUID](AdminActions& admin, const SiteSession& /*session*/, int of,
                                                const ChangeUserGroupsForm& form) {
                                  return admin.changeUserGroups(of, uid, form);
                              });
}

void openUserSections(mdlMain& program, int site, const clsUser& user, QWidget* parent) {
    open<frmUserSections>(
        program, site, parent, sectionsForm(user),
        [uid = user.iUID](AdminActions& admin, const SiteSession& /*session*/, int of,
                          const SectionsForm& form) { return admin.changeSections(of, uid, form); });
}

} // namespace corvel

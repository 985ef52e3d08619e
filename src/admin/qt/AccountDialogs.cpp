#include "admin/qt/AccountDialogs.h"

#include "widgets/TextConversion.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <utility>

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

constexpr int boxColumns = 6;

QPushButton* maskButton(int index, const QString& caption) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(elementName("cmdUserAddDelIp", index));
    button->setAutoDefault(false);
    return button;
}

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
    setWindowTitle(titleOf(tr("Change groups - %1").arg(nameTextOf(form_.sUserName))));
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
    setWindowTitle(titleOf(tr("Sections - %1").arg(nameTextOf(form_.sUserName))));
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
    open<frmAddUser>(program, site, parent, program.admin().newUserForm(site),
                     [](AdminActions& admin, const SiteSession& session, int of, const AddUserForm& form) {
                         const std::optional<std::string> problem = addUserProblem(form, session.Users);
                         return problem ? problem : admin.addUser(of, form);
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

frmAddUser::frmAddUser(Opening opening, Accept accept, QWidget* parent)
    : FormDialog("frmAddUser", tr("Add user"), std::move(opening), std::move(accept), parent),
      lstAllGroup_(new SelectableList(form_.lstAllGroup)) {
    auto* const layout = new QVBoxLayout(this);
    auto* const columns = new QHBoxLayout;
    layout->addLayout(columns, 1);
    const int gap = fontMetrics().averageCharWidth();
    columns->addLayout(createAccount(), 1);
    columns->addSpacing(gap);
    columns->addLayout(createGroups(), 1);
    columns->addSpacing(gap);
    columns->addLayout(createMasks(), 1);
    layout->addWidget(buttons());
    boxes_.show();
}

// Captions stand in the even columns, boxes in the odd ones; a text reaches across all of them.
QLayout* frmAddUser::createAccount() {
    auto* const layout = new QGridLayout;
    layout->setColumnStretch(boxColumns - 1, 1);
    const auto addRow = [layout](QWidget& box, const char* name, const QString& caption) {
        const int row = layout->rowCount();
        layout->addWidget(labelFor(box, name, caption), row, 0);
        layout->addWidget(&box, row, 1, 1, boxColumns - 1);
    };
    const auto addText = [&](std::string& member, const char* name, const QString& caption) {
        BytesEdit* const box = boxes_.add(member);
        addRow(*box, name, caption);
        return box;
    };
    addText(form_.txtUserName, "txtUserName", tr("User &name:"));
    addText(form_.txtPassword, "txtPassword", tr("&Password:"))->setEchoMode(QLineEdit::Password);
    txtMainGroup_ = new QComboBox;
    lstAllGroup_->shareNames(*txtMainGroup_);
    // The server would toggle the account out of its main group if that were among the other groups.
    connect(txtMainGroup_, &QComboBox::currentIndexChanged, lstAllGroup_, &SelectableList::hideEntry);
    addRow(*txtMainGroup_, "txtMainGroup", tr("Main &group:"));
    addText(form_.txtUserFlags, "txtUserFlags", tr("&Flags:"))->setToolTip(fromCore(flagsTip));
    addText(form_.txtUserTagLine, "txtUserTagLine", tr("&Tagline:"))->selectSampleOnFocus(taglinePlaceholder);
    addNumbers(*layout, {{&form_.txtUserCredits, "txtUserCredits", tr("&Credits (MB):")},
                         {&form_.txtRatio, "txtRatio", tr("&Ratio:")}});
    addNumbers(*layout, {{&form_.txtNumOfLogins[0], "txtNumOfLogins_0", tr("FTP logins:")},
                         {&form_.txtNumOfLogins[1], "txtNumOfLogins_1", tr("telnet:")},
                         {&form_.txtNumOfLogins[2], "txtNumOfLogins_2", tr("HTTP:")}});
    addNumbers(*layout, {{&form_.txtUserBwUp, "txtUserBwUp", tr("Upload limit (kB/s):")},
                         {&form_.txtUserBwDn, "txtUserBwDn", tr("download:")}});
    layout->setRowStretch(layout->rowCount(), 1);
    return layout;
}

void frmAddUser::addNumbers(QGridLayout& layout, const std::vector<NumberBox>& boxes) {
    const int row = layout.rowCount();
    int column = 0;
    for (const NumberBox& box : boxes) {
        BytesEdit* const edit = boxes_.add(*box.member);
        QLabel* const label = labelFor(*edit, box.name, box.caption);
        setDigitsWide(*edit, 6);
        layout.addWidget(label, row, column, column == 0 ? Qt::Alignment() : Qt::AlignRight);
        layout.addWidget(edit, row, column + 1, Qt::AlignLeft);
        column += 2;
    }
}

QLayout* frmAddUser::createGroups() {
    lstAllGroup_->setMinimumWidth(fontMetrics().averageCharWidth() * 20);
    auto* const layout = new QVBoxLayout;
    layout->addWidget(labelFor(*lstAllGroup_, "lstAllGroup", tr("&Other groups:")));
    layout->addWidget(lstAllGroup_);
    return layout;
}

QLayout* frmAddUser::createMasks() {
    BytesEdit* const mask = boxes_.add(form_.txtUserIP);
    mask->selectSampleOnFocus(maskPlaceholder);
    txtUserIP_ = mask;
    lstUserIP_ = new QListWidget;
    QPushButton* const add = maskButton(0, tr("A&dd"));
    QPushButton* const remove = maskButton(1, tr("D&elete"));
    auto* const layout = new QGridLayout;
    layout->addWidget(labelFor(*mask, "txtUserIP", tr("&IP or ident mask:")), 0, 0, 1, 2);
    layout->addWidget(mask, 1, 0, 1, 2);
    layout->addWidget(add, 2, 0);
    layout->addWidget(remove, 2, 1);
    layout->addWidget(labelFor(*lstUserIP_, "lstUserIP", tr("&Logs in from:")), 3, 0, 1, 2);
    layout->addWidget(lstUserIP_, 4, 0, 1, 2);
    layout->setRowStretch(4, 1);
    connect(add, &QPushButton::clicked, this, &frmAddUser::addMasks);
    connect(remove, &QPushButton::clicked, this, &frmAddUser::deleteMask);
    connect(lstUserIP_, &QListWidget::itemSelectionChanged, this, [this] {
        for (const QListWidgetItem* const item : lstUserIP_->selectedItems()) {
            txtUserIP_->setText(item->text());
        }
    });
    mask->installEventFilter(this);
    lstUserIP_->installEventFilter(this);
    return layout;
}

// Enter adds or deletes a mask; without this it would press the default button.
bool frmAddUser::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
        if (watched == txtUserIP_ && isEnter) {
            addMasks();
            return true;
        }
        if (watched == lstUserIP_ && (isEnter || key == Qt::Key_Delete)) {
            deleteMask();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmAddUser::appendMasks() {
    for (const QString& mask : txtUserIP_->text().split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (lstUserIP_->findItems(mask, Qt::MatchExactly | Qt::MatchCaseSensitive).isEmpty()) {
            lstUserIP_->addItem(mask);
        }
    }
}

// The text stays in the box, selected: another Enter finds it in the list and adds nothing.
void frmAddUser::addMasks() {
    appendMasks();
    txtUserIP_->setFocus();
    txtUserIP_->selectAll();
}

void frmAddUser::deleteMask() {
    const QSignalBlocker blocker(lstUserIP_);
    qDeleteAll(lstUserIP_->findItems(txtUserIP_->text(), Qt::MatchExactly | Qt::MatchCaseSensitive));
    lstUserIP_->setCurrentRow(-1);
    txtUserIP_->setText(fromCore(maskPlaceholder)); // what stays typed is added with OK
}

// A mask that is typed and not in the list yet is meant to be.
void frmAddUser::collect() {
    if (txtUserIP_->text().trimmed() != fromCore(maskPlaceholder)) {
        appendMasks();
    }
    const int mainGroup = txtMainGroup_->currentIndex();
    form_.txtMainGroup =
        mainGroup < 0 ? std::string() : form_.lstAllGroup[static_cast<std::size_t>(mainGroup)].sText;
    form_.lstAllGroup = lstAllGroup_->entries();
    form_.lstUserIP.clear();
    for (int i = 0; i < lstUserIP_->count(); ++i) {
        form_.lstUserIP.push_back(bytesOf(lstUserIP_->item(i)->text(), encoding()));
    }
}

void frmAddUser::confirmed() {
    if (const std::optional<std::string> question = addUserQuestion(form_)) {
        askBefore(*question);
    } else {
        send();
    }
}

} // namespace corvel

#pragma once

#include "admin/AdminForms.h"
#include "app/mdlMain.h"
#include "widgets/Forms.h"
#include "widgets/SelectableList.h"

#include <vector>

class QComboBox;
class QGridLayout;
class QListWidget;
class QTimer;

namespace corvel {

// Makes an account. A name that is already in the form's list of groups can become the main group; that
// group then leaves the list of the others.
class frmAddUser : public FormDialog<AddUserForm> {
  public:
    frmAddUser(Opening opening, Accept accept, QWidget* parent = nullptr);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // A box for a number in a row of several.
    struct NumberBox {
        std::string* member;
        const char* name;
        QString caption;
    };

    QLayout* createAccount();
    QLayout* createGroups();
    QLayout* createMasks();
    void addNumbers(QGridLayout& layout, const std::vector<NumberBox>& boxes);
    void appendMasks();
    void addMasks();
    void deleteMask();
    void collect() override;
    void confirmed() override;

    QComboBox* txtMainGroup_ = nullptr;
    SelectableList* lstAllGroup_;
    BytesEdit* txtUserIP_ = nullptr;
    QListWidget* lstUserIP_ = nullptr;
};

// Makes a group.
class frmAddGroup : public FormDialog<AddGroupForm> {
  public:
    frmAddGroup(Opening opening, Accept accept, QWidget* parent = nullptr);
};

// Makes a copy of an account under another name. The form is accepted with the new name without its blanks.
class frmCopyUser : public FormDialog<CopyUserForm> {
  public:
    frmCopyUser(Opening opening, Accept accept, QWidget* parent = nullptr);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void collect() override;

    OneLineEdit* txtNewUsername_;
    QTimer* tmrSetfocus_;
};

// Of which groups an account is a member, and of which it is an administrator.
class frmChangeUserGroups : public FormDialog<ChangeUserGroupsForm> {
  public:
    frmChangeUserGroups(Opening opening, Accept accept, QWidget* parent = nullptr);

  private:
    void collect() override;

    SelectableList* lstGroups_;
    SelectableList* lstGAdmin_;
};

// The ratio and the credits of an account in each of its sections.
class frmUserSections : public FormDialog<SectionsForm> {
  public:
    frmUserSections(Opening opening, Accept accept, QWidget* parent = nullptr);
};

// Open the dialogs that make and change accounts and groups on a site, and send what they collect there, even
// where another site is the current one by then. All return at once; parent's window waits for the dialog,
// which deletes itself. program must outlive parent. user: a record of the site's table, whose details the
// last two show.
void openAddUser(mdlMain& program, int site, QWidget* parent);
void openAddGroup(mdlMain& program, int site, QWidget* parent);
void openCopyUser(mdlMain& program, int site, const clsUser& user, QWidget* parent);
void openUserGroups(mdlMain& program, int site, const clsUser& user, QWidget* parent);
void openUserSections(mdlMain& program, int site, const clsUser& user, QWidget* parent);

} // namespace corvel

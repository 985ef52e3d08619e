#pragma once

#include "admin/AdminForms.h"
#include "app/mdlMain.h"
#include "widgets/FormDialog.h"

#include <vector>

class QTimer;

namespace corvel {

class OneLineEdit;
class SelectableList;

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

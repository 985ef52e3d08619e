#pragma once

#include "admin/AdminForms.h"
#include "widgets/FormDialog.h"

#include <vector>

class QComboBox;
class QGridLayout;
class QLineEdit;
class QListWidget;

namespace corvel {

class SelectableList;

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
    void mainGroupChanged(int index);
    void addMasks();
    void deleteMask();
    void collect() override;
    void confirmed() override;

    QComboBox* txtMainGroup_ = nullptr;
    SelectableList* lstAllGroup_ = nullptr;
    QLineEdit* txtUserIP_ = nullptr;
    QListWidget* lstUserIP_ = nullptr;
};

} // namespace corvel

#pragma once

#include "admin/AddUser.h"
#include "widgets/FormBoxes.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QGridLayout;
class QLineEdit;
class QListWidget;

namespace corvel {

class SelectableList;

// Makes an account. A name that is already in the form's list of groups can become the main group; that
// group then leaves the list of the others.
class frmAddUser : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form when the OK button is pressed: nothing, and the dialog closes, or a message,
    // and it stays open. An empty message is not shown: the person was told already.
    using Accept = std::function<std::optional<std::string>(const AddUserForm&)>;

    // What the dialog is opened with; the texts are in the encoding.
    struct Opening {
        AddUserForm form;
        TextEncoding encoding = TextEncoding::utf8;
    };

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
    void okClicked();
    void confirmed();

    AddUserForm form_;
    TextEncoding encoding_;
    Accept accept_;
    FormBoxes boxes_;
    QComboBox* txtMainGroup_ = nullptr;
    SelectableList* lstAllGroup_ = nullptr;
    QLineEdit* txtUserIP_ = nullptr;
    QListWidget* lstUserIP_ = nullptr;
};

} // namespace corvel

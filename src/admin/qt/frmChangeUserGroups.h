#pragma once

#include "admin/ChangeUserGroups.h"
#include "common/TextEncoding.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>

namespace corvel {

class SelectableList;

// Of which groups an account is a member, and of which it is an administrator.
class frmChangeUserGroups : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form when the OK button is pressed: nothing where the dialog may close, else why
    // it stays open.
    using Accept = std::function<std::optional<std::string>(const ChangeUserGroupsForm&)>;

    // What the dialog is opened with; the texts are in the encoding.
    struct Opening {
        std::string sUserName;
        ChangeUserGroupsForm form;
        TextEncoding encoding = TextEncoding::utf8;
    };

    frmChangeUserGroups(Opening opening, Accept accept, QWidget* parent = nullptr);

  private:
    void okClicked();

    ChangeUserGroupsForm form_;
    Accept accept_;
    SelectableList* lstGroups_;
    SelectableList* lstGAdmin_;
};

} // namespace corvel

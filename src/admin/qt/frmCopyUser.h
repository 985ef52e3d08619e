#pragma once

#include "admin/CopyUser.h"
#include "common/TextEncoding.h"
#include "widgets/OneLineEdit.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>

class QTimer;

namespace corvel {

// A box for the name of a copied account: the keys for characters that no such name has do nothing.
class CopyNameEdit : public OneLineEdit {
    Q_OBJECT

  public:
    using OneLineEdit::OneLineEdit;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// Makes a copy of an account under another name.
class frmCopyUser : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form, the new name without its blanks, when the OK button is pressed: nothing, and
    // the dialog closes, or a message, and it stays open.
    using Accept = std::function<std::optional<std::string>(const CopyUserForm&)>;

    // What the dialog is opened with; the texts are in the encoding.
    struct Opening {
        CopyUserForm form;
        TextEncoding encoding = TextEncoding::utf8;
    };

    frmCopyUser(Opening opening, Accept accept, QWidget* parent = nullptr);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void okClicked();

    CopyUserForm form_;
    TextEncoding encoding_;
    Accept accept_;
    CopyNameEdit* txtNewUsername_ = nullptr;
    QTimer* tmrSetfocus_ = nullptr;
};

} // namespace corvel

#pragma once

#include "browser/FileDialogs.h"
#include "common/TextEncoding.h"
#include "widgets/FormBoxes.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>

class QCheckBox;
class QFormLayout;
class QLineEdit;
class QPushButton;

namespace corvel {

class SelectableList;

// Hides a directory from all but those that are selected. It cannot be confirmed before the server has said
// who sees the directory now: confirming with nothing selected takes that back.
class frmBrowserCHATTR : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form when the OK button is pressed: nothing where the dialog may close, else why
    // it stays open.
    using Accept = std::function<std::optional<std::string>(const ChattrForm&)>;

    // What the dialog is opened with; the texts are in the encoding.
    struct Opening {
        ChattrForm form;
        TextEncoding encoding = TextEncoding::utf8;
    };

    frmBrowserCHATTR(Opening opening, Accept accept, QWidget* parent = nullptr);

    // Shows the server's answer, in the encoding, which is that of what is typed too from now on.
    void setAnswer(const ChattrAnswer& answer, TextEncoding encoding);

  private:
    QFormLayout* createTop(const Opening& opening);
    QLayout* createLists(TextEncoding encoding);
    void confirmed();

    ChattrForm form_;
    Accept accept_;
    FormBoxes boxes_;
    QLineEdit* txtCurrent_ = nullptr;
    QCheckBox* chkFlags_ = nullptr;
    QLineEdit* txtFlags_ = nullptr;
    SelectableList* lstUsers_ = nullptr;
    SelectableList* lstGroups_ = nullptr;
    QPushButton* Command1_ = nullptr;
};

} // namespace corvel

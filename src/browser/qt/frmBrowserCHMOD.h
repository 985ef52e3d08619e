#pragma once

#include "browser/FileDialogs.h"
#include "common/TextEncoding.h"
#include "widgets/FormBoxes.h"

#include <QDialog>

#include <array>
#include <functional>
#include <optional>
#include <string>

class QCheckBox;
class QFormLayout;

namespace corvel {

// The permissions of an entry, as boxes to check or as a mode to type.
class frmBrowserCHMOD : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form when the OK button is pressed: nothing where the dialog may close, else why
    // it stays open.
    using Accept = std::function<std::optional<std::string>(const ChmodForm&)>;

    // What the dialog is opened with; the texts are in the encoding.
    struct Opening {
        ChmodForm form;
        TextEncoding encoding = TextEncoding::utf8;
    };

    frmBrowserCHMOD(Opening opening, Accept accept, QWidget* parent = nullptr);

  private:
    void addPermissions(QFormLayout& layout);
    void boxClicked();
    void modeEdited();
    void okClicked();

    ChmodForm form_;
    TextEncoding encoding_;
    Accept accept_;
    FormBoxes boxes_;
    std::array<QCheckBox*, permissionCount> chkX_ = {};
    BytesEdit* txtCHMODval_ = nullptr;
};

} // namespace corvel

#pragma once

#include "browser/FileDialogs.h"
#include "common/TextEncoding.h"
#include "widgets/FormBoxes.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>

class QFormLayout;
class QLineEdit;

namespace corvel {

// Nukes a release: by how much and why.
class frmBrowserNUKE : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form when the OK button is pressed: nothing where the dialog may close, else why
    // it stays open.
    using Accept = std::function<std::optional<std::string>(const NukeForm&)>;

    // What the dialog is opened with; the texts are in the encoding.
    struct Opening {
        NukeForm form;
        bool hasSyntax = true; // whether the settings say how to ask for it
        TextEncoding encoding = TextEncoding::utf8;
    };

    frmBrowserNUKE(Opening opening, Accept accept, QWidget* parent = nullptr);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void okClicked();

    NukeForm form_;
    Accept accept_;
    FormBoxes boxes_;
    QLineEdit* txtReason_ = nullptr;
};

} // namespace corvel

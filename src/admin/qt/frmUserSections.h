#pragma once

#include "admin/Sections.h"
#include "common/TextEncoding.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QGridLayout;

namespace corvel {

class OneLineEdit;

// The ratio and the credits of an account in each of its sections.
class frmUserSections : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form when the Save button is pressed: nothing where the dialog may close, else why
    // it stays open.
    using Accept = std::function<std::optional<std::string>(const SectionsForm&)>;

    // What the dialog is opened with; the name is in the encoding.
    struct Opening {
        std::string sUserName;
        SectionsForm form;
        TextEncoding encoding = TextEncoding::utf8;
    };

    frmUserSections(Opening opening, Accept accept, QWidget* parent = nullptr);

  private:
    void addSection(QGridLayout& layout, int index);
    OneLineEdit* addBox(QGridLayout& layout, const char* name, int index, int column);
    void cmdSave_Click();

    SectionsForm form_;
    Accept accept_;
    std::vector<OneLineEdit*> txtRatio_;
    std::vector<OneLineEdit*> txtCredits_;
};

} // namespace corvel

#pragma once

#include "config/Sites.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QCheckBox;
class QFormLayout;

namespace corvel {

class OneLineEdit;

// The editor of a site: shows a SiteForm and gives it back as the person left it.
class frmSitesAddEdit : public QDialog {
    Q_OBJECT

  public:
    // What becomes of a form when the OK button is pressed: a message to show, with the dialog staying open,
    // or nothing, and the dialog closes.
    using Accept = std::function<std::optional<std::string>(const SiteForm&)>;

    // What the dialog is opened with. A text that is left as it was comes back as the same bytes.
    struct Opening {
        QString caption;
        QString okCaption;
        SiteForm form;
    };

    frmSitesAddEdit(Opening opening, Accept accept, QWidget* parent = nullptr);

  private:
    // A text box and the member of the form that it shows.
    struct TextField {
        std::string SiteForm::*member;
        OneLineEdit* box;
    };
    struct Label;

    void addTextField(QFormLayout& layout, const Label& label);
    QCheckBox* addCheckBox(QFormLayout& layout, const char* name, const QString& caption, bool checked);
    SiteForm collect() const;
    void okClicked();

    SiteForm opened_;
    Accept accept_;
    std::vector<TextField> texts_;
    QCheckBox* connectOnStartup_ = nullptr;
    QCheckBox* useSslProxy_ = nullptr;
};

} // namespace corvel

#pragma once

#include "admin/AddGroup.h"
#include "widgets/FormBoxes.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>

namespace corvel {

// Makes a group.
class frmAddGroup : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form when the OK button is pressed: nothing, and the dialog closes, or a message,
    // and it stays open. An empty message is not shown: the person was told already.
    using Accept = std::function<std::optional<std::string>(const AddGroupForm&)>;

    // encoding: that of the connection, for what is typed.
    frmAddGroup(TextEncoding encoding, Accept accept, QWidget* parent = nullptr);

  private:
    void okClicked();

    AddGroupForm form_;
    TextEncoding encoding_;
    Accept accept_;
    FormBoxes boxes_;
};

} // namespace corvel

#pragma once

#include "admin/qt/AccountsPanel.h"

class QPushButton;

namespace corvel {

class BatchPanel;
struct BatchForm;
class UserEditorPanel;

// The users tab: for every site its list lvwUsers, and beside it the editor of its current account, or in its
// place the batch panel.
class UsersPanel : public AccountsPanel {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit UsersPanel(mdlMain& program, QWidget* parent = nullptr);

    // Open the dialog that copies the site's current account, and that of its groups; without an account,
    // none opens.
    void copyUser(int site);
    void editGroups(int site);

  private:
    QLayout* createButtons();
    void showEditor(int site) override;
    void cmdUserBatch_Click();
    void cmdBatchPerform_Click(const BatchForm& form);

    QPushButton* cmdUserBatch_ = nullptr;
    QStackedWidget* sides_ = nullptr; // the editor or the batch panel
    UserEditorPanel* editor_ = nullptr;
    BatchPanel* batch_ = nullptr;
};

} // namespace corvel

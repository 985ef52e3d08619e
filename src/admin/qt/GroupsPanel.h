#pragma once

#include "admin/qt/AccountsPanel.h"
#include "admin/qt/EditorBoxes.h"

class QFormLayout;
class QLabel;
class QLineEdit;

namespace corvel {

// The groups tab: for every site its list lvwGroups, and beside it the editor of its current group.
class GroupsPanel : public AccountsPanel {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit GroupsPanel(mdlMain& program, QWidget* parent = nullptr);

  private:
    QWidget* createEditor();
    QFormLayout* createBoxes();
    QLayout* createMembers();
    void showEditor(int site) override;
    void showMembers();

    EditorBoxes boxes_;
    QLineEdit* gid_ = nullptr;
    ReportView* lvwGroupMembers_ = nullptr;
    QLabel* lblGroupMembers_ = nullptr;
    QPushButton* cmdGroupSaveChanges_ = nullptr;
    QPushButton* cmdReloadGroupfile_ = nullptr;

    GroupForm form_; // as it was shown; its list is what the list shows
    TextEncoding encoding_ = TextEncoding::utf8;
};

} // namespace corvel

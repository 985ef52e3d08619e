#pragma once

#include "admin/qt/AccountsPanel.h"

namespace corvel {

class GroupEditorPanel;

// The groups tab: for every site its list lvwGroups, and beside it the editor of its current group.
class GroupsPanel : public AccountsPanel {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit GroupsPanel(mdlMain& program, QWidget* parent = nullptr);

  private:
    void showEditor(int site) override;

    GroupEditorPanel* editor_ = nullptr;
};

} // namespace corvel

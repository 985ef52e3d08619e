#pragma once

#include "admin/qt/AccountsPanel.h"

class QFormLayout;

namespace corvel {

// The groups tab: for every site its list lvwGroups, and beside it the editor of its current group.
class GroupsPanel : public AccountsPanel {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit GroupsPanel(mdlMain& program, QWidget* parent = nullptr);

  signals:
    // A double click on a member: his account is wanted.
    void userWanted(std::int16_t uid);

  private:
    QWidget* createEditor();
    QFormLayout* createBoxes();
    QLayout* createMembers();
    void showEditor(int site) override;

    RecordEditor<GroupKind> editor_;
    QLineEdit* gid_ = nullptr;
    ReportView* lvwGroupMembers_ = nullptr;
    QLabel* lblGroupMembers_ = nullptr;
};

} // namespace corvel

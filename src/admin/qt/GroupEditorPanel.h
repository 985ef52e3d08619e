#pragma once

#include "admin/qt/EditorBoxes.h"

#include <QWidget>

class QFormLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

namespace corvel {

class ReportView;

// The editor of the groups tab. It shows an AccountEditor and says what a person does.
class GroupEditorPanel : public QWidget {
    Q_OBJECT

  public:
    explicit GroupEditorPanel(EditorBoxes::Typed typed, QWidget* parent = nullptr);

    // Shows the record, whose texts are in the encoding.
    void show(AccountEditor<GroupForm> editor, TextEncoding encoding);

  signals:
    void reloadRequested();
    void saveRequested();

  private:
    QFormLayout* createBoxes();
    QLayout* createMembers();
    QLayout* createButtons();
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

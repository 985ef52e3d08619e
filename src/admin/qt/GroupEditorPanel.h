#pragma once

#include "admin/GroupEditor.h"
#include "widgets/FormBoxes.h"

#include <QWidget>

#include <string>
#include <vector>

class QFormLayout;
class QLabel;
class QLayout;
class QLineEdit;

namespace corvel {

class ReportView;

// The group editor: shows a GroupForm and gives it back as a person left it.
class GroupEditorPanel : public QWidget {
    Q_OBJECT

  public:
    explicit GroupEditorPanel(QWidget* parent = nullptr);

    // Shows form, whose texts are in the encoding; clear shows no group.
    void setForm(GroupForm form, TextEncoding encoding);
    void clear() { setForm({}, TextEncoding::utf8); }

    // Shows these members and leaves the boxes as a person left them.
    void setMembers(std::vector<GroupMemberRow> members);

    GroupForm form();
    const std::string& txtGroupGID() const { return form_.txtGroupGID; }

  signals:
    void reloadRequested();
    void saveRequested();

  private:
    QFormLayout* createBoxes();
    QLayout* createMembers();
    QLayout* createButtons();
    QString memberText(const GroupMemberRow& member, int column) const;

    GroupForm form_; // as the boxes were loaded or last collected
    TextEncoding encoding_ = TextEncoding::utf8;
    FormBoxes boxes_;
    QLineEdit* gid_ = nullptr;
    ReportView* lvwGroupMembers_ = nullptr;
    QLabel* lblGroupMembers_ = nullptr;
};

} // namespace corvel

#pragma once

#include "admin/UserForm.h"
#include "common/TextEncoding.h"

#include <QWidget>

#include <array>
#include <string>
#include <vector>

class QGridLayout;
class QLayout;
class QListWidget;
class QScrollBar;

namespace corvel {

class BytesEdit;
class ReportView;

// The user editor, picUserContainer: the controls in picUserCtls, which ScrollU moves where it is higher than
// the room for it. It shows a form and collects it; what its buttons are pressed for, it only announces.
class UserEditorPanel : public QWidget {
    Q_OBJECT

  public:
    explicit UserEditorPanel(QWidget* parent = nullptr);

    // Shows form, whose texts are in the encoding. The box for a mask belongs to the person and stays.
    void setForm(UserForm form, TextEncoding encoding);
    // Shows the groups of the same account anew.
    void setGroups(std::vector<UserGroupRow> groups);
    // Shows no account.
    void clear() { setForm({}, TextEncoding::utf8); }

    // What the boxes and lists show.
    UserForm form() const;
    std::string txtUserUID() const;

  signals:
    void saveRequested();
    void reloadRequested();
    void passwordRequested();
    void addMaskRequested();
    void deleteMaskRequested();
    void groupsRequested();
    void sectionsRequested();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;

  private:
    struct TextBox {
        std::string UserForm::*member;
        BytesEdit* box;
    };

    BytesEdit* addBox(QGridLayout& layout, int row, int column, int span, const char* name,
                      const QString& caption, std::string UserForm::*member);
    void addTexts(QGridLayout& layout);
    void addLimits(QGridLayout& layout);
    void addLogins(QGridLayout& layout);
    QLayout* createAddresses();
    QLayout* createGroups();
    QLayout* createSections();
    QLayout* createButtons();
    void addressPicked(int row);
    void layoutControls();
    void ScrollU_Change();
    void showFocused(QWidget* focused);

    QWidget* picUserCtls_;
    QScrollBar* ScrollU_;
    std::vector<TextBox> texts_;
    std::array<BytesEdit*, 3> txtUserLogins_{};
    BytesEdit* txtUserUID_ = nullptr;
    BytesEdit* txtUserIP_ = nullptr;
    QListWidget* lstUserIP_ = nullptr;
    ReportView* lvwUserGroups_ = nullptr;
    ReportView* lvwUserSections_ = nullptr;

    UserForm form_; // as it was shown; its lists are what the lists show
    TextEncoding encoding_ = TextEncoding::utf8;
};

} // namespace corvel

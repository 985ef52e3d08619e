#pragma once

#include "admin/qt/EditorBoxes.h"

#include <QScrollArea>

#include <functional>
#include <string>
#include <vector>

class QGridLayout;
class QLayout;
class QListWidget;
class QPushButton;

namespace corvel {

class ReportView;

// The editor of the users tab: boxes, lists and buttons, which scroll where there is too little room. It
// shows an AccountEditor and says what a person does.
class UserEditorPanel : public QScrollArea {
    Q_OBJECT

  public:
    explicit UserEditorPanel(EditorBoxes::Typed typed, QWidget* parent = nullptr);

    // Shows the record, whose texts are in the encoding. The box for a mask belongs to the person and stays.
    void show(AccountEditor<UserForm> editor, TextEncoding encoding);

    // The mask that is typed, UTF-8.
    std::string txtUserIP() const;

    QSize minimumSizeHint() const override;

  signals:
    void saveRequested();
    void reloadRequested();
    void passwordRequested();
    void addMaskRequested();
    void deleteMaskRequested();
    void groupsRequested();
    void sectionsRequested();

  private:
    BytesEdit* place(QGridLayout& layout, BytesEdit& box, int row, int column, int span, const char* name,
                     const QString& caption);
    BytesEdit* addShownOnly(QGridLayout& layout, int row, int column, const char* name,
                            const QString& caption);
    void addTexts(QGridLayout& layout);
    void addLogins(QGridLayout& layout);
    QLayout* createAddresses();
    QLayout* createGroups();
    QLayout* createSections();
    QLayout* createButtons();
    QPushButton* newButton(const char* name, const QString& caption, void (UserEditorPanel::*signal)(),
                           bool needsDetails);
    void addressPicked(int row);

    EditorBoxes boxes_;
    BytesEdit* txtUserUID_ = nullptr;
    BytesEdit* txtUserGroup_ = nullptr;
    BytesEdit* txtUserIP_ = nullptr;
    QListWidget* lstUserIP_ = nullptr;
    ReportView* lvwUserGroups_ = nullptr;
    ReportView* lvwUserSections_ = nullptr;
    std::vector<QPushButton*> forDetails_; // the buttons that work on details, and those that need a record
    std::vector<QPushButton*> forRecords_;

    UserForm form_; // as it was shown; its lists are what the lists show
    TextEncoding encoding_ = TextEncoding::utf8;
};

} // namespace corvel

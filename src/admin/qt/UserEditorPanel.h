#pragma once

#include "admin/qt/EditorBoxes.h"
#include "app/mdlMain.h"

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

// The editor of the users tab: boxes, lists and buttons, which scroll where there is too little room. Its
// buttons act on the current user of the current site.
class UserEditorPanel : public QScrollArea {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit UserEditorPanel(mdlMain& program, QWidget* parent = nullptr);

    // Shows the current user of the site; 0: there is no site. The box for a mask belongs to the person and
    // stays.
    void showSite(int site);

    QSize minimumSizeHint() const override;

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
    // act: what it does with the site that is the current one then.
    QPushButton* newButton(const char* name, const QString& caption, bool needsDetails,
                           std::function<void(int site)> act);
    void whenSite(const std::function<void(int site)>& act) const;
    void editSections(int site);
    void addressPicked(int row);

    mdlMain& program_;
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

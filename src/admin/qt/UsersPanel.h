#pragma once

#include "admin/qt/AccountsPanel.h"

#include <QStackedWidget>

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_set>

class QGridLayout;
class QListWidget;

namespace corvel {

class BatchPanel;
class BatchResults;
struct BatchForm;
struct CommandSequence;

// The editor of the users tab: boxes and lists, which scroll where there is too little room, and below them
// buttons. They act on the current user of the current site.
class UserEditorPanel : public QWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit UserEditorPanel(mdlMain& program, QWidget* parent = nullptr);

    // Shows the current user of the site; 0: there is no site. The box for a mask belongs to the person and
    // stays.
    LinkLabel* outcome() const { return editor_.outcome(); }
    void showSite(int site);
    // Says who the current user is, and that count of them are selected.
    void showSelected(std::size_t count);

  private:
    QWidget* createArea();
    void addTexts(QGridLayout& layout);
    void addLogins(QGridLayout& layout);
    QLayout* createAddresses();
    QLayout* createGroups();
    QLayout* createSections();
    QLayout* createButtons();
    void editSections();
    void addressPicked(int row);

    mdlMain& program_;
    RecordEditor<UserKind> editor_;
    ElidedLabel* lblUserCurrent_;
    BytesEdit* txtUserUID_ = nullptr;
    BytesEdit* txtUserGroup_ = nullptr;
    BytesEdit* txtUserIP_ = nullptr;
    QListWidget* lstUserIP_ = nullptr;
    ReportView* lvwUserGroups_ = nullptr;
    ReportView* lvwUserSections_ = nullptr;
};

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
    // Goes to the user of the current site with that id, if there is one.
    void goToUser(std::int16_t uid);

    // What runs on a site, or what became of it, has changed.
    void jobsChanged(int site);

  private:
    QLayout* createButtons();
    void createBatch();
    void showEditor(int site) override;
    void selectionChanged() override;
    void save(int site) override;
    void cmdUserBatch_Click();
    std::optional<CommandSequence> batchOf(const BatchForm& form) const;
    void selectNamed(int site, const std::unordered_set<std::string_view>& names);

    QPushButton* cmdUserBatch_ = nullptr;
    QPushButton* cmdUserAdded_ = nullptr; // what was added, and the list does not show yet
    QStackedWidget* sides_ = nullptr;     // the editor or the batch panel
    UserEditorPanel* editor_ = nullptr;
    BatchPanel* batch_ = nullptr;
    BatchResults* results_ = nullptr;
};

} // namespace corvel

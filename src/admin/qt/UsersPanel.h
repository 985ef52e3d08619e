#pragma once

#include "app/mdlMain.h"

#include <QWidget>

#include <functional>
#include <vector>

class QPoint;
class QPushButton;
class QStackedWidget;

namespace corvel {

class ReportView;
class UserEditorPanel;

// The users tab: for every site its list lvwUsers, and beside it the editor, which belongs to the current
// site and shows its current account or nothing.
class UsersPanel : public QWidget {
    Q_OBJECT

  public:
    // What opens when a person wants it; site is the current one. A button whose opener is missing is off.
    struct Openers {
        std::function<void(int site)> addUser;             // cmdUserAdd and the Insert key
        std::function<void(int site)> copyUser;            // cmdUserCopy; the current account is the source
        std::function<void(int site, const QPoint&)> menu; // of the list, at that place on screen
    };

    // program: borrowed, must outlive the panel.
    explicit UsersPanel(mdlMain& program, QWidget* parent = nullptr);

    void setOpeners(Openers openers);

    void addSite(int site);
    void showSite(int site);
    void usersChanged(int site); // also when the connection has ended
    void usersSorted(int site);
    void groupsChanged(int site);
    void userShown(int site, int index);

    // The indexes of the selected records in the site's table, in the order of the list.
    std::vector<int> selectedUsers(int site) const;

  private:
    QWidget* createLists();
    ReportView* createList(int site);
    void connectEditor();
    void keyPressed(int site, int key, int row);
    void selectCurrent(int site);
    void cmdUserAdd_Click();
    void cmdUserEditGroups_Click();
    void lvwUserSections_DblClick();
    ReportView& list(int site) const { return *lists_[static_cast<std::size_t>(site)]; }
    const SiteSession& session(int site) const { return program_.site(site).session; }

    mdlMain& program_;
    Openers openers_;
    std::vector<ReportView*> lists_; // element 0 belongs to no site
    QStackedWidget* stack_ = nullptr;
    QPushButton* cmdUserAdd_ = nullptr;
    QPushButton* cmdUserCopy_ = nullptr;
    UserEditorPanel* editor_ = nullptr;
};

} // namespace corvel

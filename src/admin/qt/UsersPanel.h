#pragma once

#include "app/mdlMain.h"
#include "widgets/SitePages.h"

#include <QWidget>

class QPoint;
class QPushButton;
class QStackedWidget;

namespace corvel {

class BatchPanel;
class ReportView;
struct BatchForm;
class UserEditorPanel;

// The users tab: for every site its list lvwUsers, and beside it the editor, which belongs to the current
// site and shows its current account or nothing, or in its place the batch panel.
class UsersPanel : public QWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit UsersPanel(mdlMain& program, QWidget* parent = nullptr);

    void connectionChanged(int site); // an empty list says so
    void showSite(int site);
    void usersChanged(int site); // also when the connection has ended
    void usersSorted(int site);
    void groupsChanged(int site);
    void userShown(int site, int index);

    // Opens the dialog that copies the site's current account; without one, none opens.
    void copyUser(int site);

  signals:
    // The current site's list wants its pop-up menu, at a place on screen.
    void menuRequested(const QPoint& globalPosition);

  private:
    QWidget* createLists();
    ReportView* createList(int site);
    void fill(ReportView& list, int site);
    void connectEditor();
    void sortUsers(int site, int column);
    void keyPressed(int site, int key, int row);
    void selectCurrent(ReportView& list, int site);
    bool isOpen(int site) const;
    void showInEditor(int site, int index);
    void cmdUserAdd_Click();
    void cmdUserBatch_Click();
    void cmdBatchPerform_Click(const BatchForm& form);
    void cmdUserEditGroups_Click();
    void lvwUserSections_DblClick();
    ReportView& list(int site);
    const SiteSession& session(int site) const { return program_.site(site).session; }

    mdlMain& program_;
    SitePages<ReportView*>* lists_ = nullptr;
    QPushButton* cmdUserBatch_ = nullptr;
    QStackedWidget* sides_ = nullptr; // the editor or the batch panel
    UserEditorPanel* editor_ = nullptr;
    BatchPanel* batch_ = nullptr;
};

} // namespace corvel

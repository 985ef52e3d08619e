#pragma once

#include "app/mdlMain.h"
#include "widgets/SitePages.h"

#include <QWidget>

class QPoint;

namespace corvel {

class GroupEditorPanel;
class ReportView;

// The groups tab: for every site its list lvwGroups, and beside it the editor, which belongs to the current
// site and shows its current group or nothing.
class GroupsPanel : public QWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit GroupsPanel(mdlMain& program, QWidget* parent = nullptr);

    void connectionChanged(int site); // an empty list says so
    void showSite(int site);
    void groupsChanged(int site); // also when the connection has ended
    void groupsSorted(int site);
    void usersChanged(int site);
    void groupShown(int site, int index);

  signals:
    // The current site's list wants its pop-up menu, at a place on screen.
    void menuRequested(const QPoint& globalPosition);

  private:
    QWidget* createLists();
    ReportView* createList(int site);
    void fill(ReportView& list, int site);
    void connectEditor();
    void keyPressed(int site, int key, int row);
    void selectCurrent(ReportView& list, int site);
    bool isOpen(int site) const;
    void showInEditor(int site, int index);
    ReportView& list(int site);
    const SiteSession& session(int site) const { return program_.site(site).session; }

    mdlMain& program_;
    SitePages<ReportView*>* lists_ = nullptr;
    GroupEditorPanel* editor_ = nullptr;
};

} // namespace corvel

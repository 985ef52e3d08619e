#pragma once

#include "app/mdlMain.h"
#include "widgets/SitePages.h"

#include <QWidget>

#include <cstdint>

class QCheckBox;
class QPoint;
class QPushButton;

namespace corvel {

class ImageLists;
class ReportView;

// The activity tab: the box that freezes the lists, the button that asks who is online, and for every site
// its list lvwActivity. The columns of all lists are arranged alike, as windowState() says; what a person
// changes in one goes there at once.
class ActivityPanel : public QWidget {
    Q_OBJECT

  public:
    // Both are borrowed and must outlive the panel.
    ActivityPanel(mdlMain& program, const ImageLists& images, QWidget* parent = nullptr);

    void showSite(int site);
    void dropSite(int site) { pages_->drop(site); }
    void activityChanged(int site); // also when the connection has ended

    // After a change of the columns, or of the colours, in windowState().
    void applyColumns();
    void applyColours();

    // Gives a width back to those shown columns of the current site's list that have none.
    void restoreColumnWidths();

    bool isFrozen() const;

  signals:
    // The current site's list wants its pop-up menu, at a place on screen.
    void menuRequested(const QPoint& globalPosition);

  private:
    struct Page {
        ReportView* widget = nullptr;
        std::uint64_t shownReply = 0; // the last one that the list shows
    };

    ReportView* createList(int site);
    void showRows(Page& page, int site);
    void arrange(ReportView& list);
    void fit(ReportView& list) const;
    void keepOrder(const ReportView& list);
    void keepWidth(const ReportView& list, int column);
    WindowState& state() const { return program_.windowState(); }

    mdlMain& program_;
    const ImageLists& images_;
    SitePages<Page>* pages_ = nullptr;
    QCheckBox* chkFreezeRefresh_ = nullptr;
    QPushButton* cmdRefreshWho_ = nullptr;
    bool isArranging_ = false; // the columns are changed by the panel, not by a person
};

} // namespace corvel

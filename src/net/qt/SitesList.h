#pragma once

#include <QListView>
#include <QStandardItemModel>

namespace corvel {

struct EncryptionStatus;
class ImageLists;

// The sites list in its two views: one line for the name and one for the state, or icons with names. Site i
// is row i - 1 of its model; column 0 has the name with its icon, column 1 the state of the connection.
class SitesList : public QListView {
    Q_OBJECT

  public:
    // images: borrowed, must outlive the list.
    explicit SitesList(const ImageLists& images, QWidget* parent = nullptr);

    // Appends a row.
    void addSite(const QString& name);
    void setName(int site, const QString& name);
    // Writes only what differs from what is shown. encryption: for the tool tip.
    void setState(int site, const QString& text, bool connected, const EncryptionStatus& encryption);
    // Makes the site's row the current one; 0: none.
    void select(int site) { setCurrentIndex(sites_.index(site - 1, 0)); }

    void setReportView(bool report);
    bool isReportView() const { return viewMode() == QListView::ListMode; }

  signals:
    void menuRequested(const QPoint& globalPosition);

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void describe(int row);

    const ImageLists& images_;
    QStandardItemModel sites_{0, 2};
};

} // namespace corvel

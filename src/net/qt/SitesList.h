#pragma once

#include <QListView>
#include <QStandardItemModel>

namespace corvel {

struct EncryptionStatus;
class ImageLists;

// The sites list in its two views: one line for the name and one for the state, or icons with names. The rows
// of its model are the sites in their order, without those that were removed; column 0 has the name with its
// icon, column 1 the state of the connection.
class SitesList : public QListView {
    Q_OBJECT

  public:
    // images: borrowed, must outlive the list.
    explicit SitesList(const ImageLists& images, QWidget* parent = nullptr);

    // Appends a row.
    void addSite(int site, const QString& name);
    // Takes the site's row away. Whatever else is said about a site without a row does nothing.
    void removeSite(int site);
    void setName(int site, const QString& name);
    // Writes only what differs from what is shown. encryption: for the tool tip.
    void setState(int site, const QString& text, bool connected, const EncryptionStatus& encryption);
    // Marks the row: there was an error that nobody has seen.
    void setMarked(int site, bool isMarked);
    // Makes the site's row the current one; 0: none.
    void select(int site) { setCurrentIndex(sites_.index(rowOf(site), 0)); }
    // The site of a row; 0 for none.
    static int siteAt(const QModelIndex& row);

    void setReportView(bool report);
    bool isReportView() const { return viewMode() == QListView::ListMode; }

  signals:
    void menuRequested(const QPoint& globalPosition);

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    int rowOf(int site) const; // -1 where it has none
    void describe(int row);

    const ImageLists& images_;
    QStandardItemModel sites_{0, 2};
};

} // namespace corvel

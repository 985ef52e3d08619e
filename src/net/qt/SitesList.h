#pragma once

#include <QAbstractTableModel>
#include <QListView>

#include <vector>

namespace corvel {

class ImageLists;

// The rows of the sites list: column 0 the name with its icon, column 1 the state of the connection.
class SitesModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    // images: borrowed, must outlive the model.
    explicit SitesModel(const ImageLists& images, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    // Appends a row. Site i is row i - 1.
    void addSite(const QString& name);
    // Each writes only what differs from what is shown.
    void setName(int row, const QString& name);
    void setState(int row, const QString& text, bool connected);

  private:
    struct Row {
        QString name;
        QString state;
        bool connected = false;
    };

    const ImageLists& images_;
    std::vector<Row> rows_;
};

// The sites list in its two views: one line for the name and one for the state, or icons with names.
class SitesList : public QListView {
    Q_OBJECT

  public:
    explicit SitesList(SitesModel& model, QWidget* parent = nullptr);

    void setReportView(bool report);
    bool isReportView() const { return viewMode() == QListView::ListMode; }

  signals:
    void menuRequested(const QPoint& globalPosition);

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
};

} // namespace corvel

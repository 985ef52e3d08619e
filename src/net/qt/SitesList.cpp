#include "net/qt/SitesList.h"

#include "widgets/ImageLists.h"
#include "widgets/TextConversion.h"

#include <QContextMenuEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace corvel {

namespace {

constexpr int nameColumn = 0;
constexpr int stateColumn = 1;
constexpr int margin = 6;
constexpr int smallIconSize = 16;
constexpr int largeIconSize = 32;

// Draws a site: in the report view the icon, the name and below it the state in the quiet text colour; in the
// icon view the icon above the name.
class SiteDelegate : public QStyledItemDelegate {
  public:
    explicit SiteDelegate(const SitesList& list, QObject* parent)
        : QStyledItemDelegate(parent), list_(list) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override {
        if (!list_.isReportView()) {
            return list_.gridSize();
        }
        return {option.rect.width(), 2 * option.fontMetrics.height() + 2 * margin};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem ground = option;
        ground.showDecorationSelected = true; // the icon view would leave the icon outside the selection
        list_.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, painter, &list_);
        const QRect area = option.rect.adjusted(margin, margin, -margin, -margin);
        if (list_.isReportView()) {
            paintRow(*painter, option, index, area);
        } else {
            paintIcon(*painter, option, index, area);
        }
    }

  private:
    static bool isSelected(const QStyleOptionViewItem& option) {
        return (option.state & QStyle::State_Selected) != 0;
    }

    static void drawIcon(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                         const QRect& place) {
        index.data(Qt::DecorationRole)
            .value<QIcon>()
            .paint(&painter, place, Qt::AlignCenter, isSelected(option) ? QIcon::Selected : QIcon::Normal);
    }

    QColor textColor(const QStyleOptionViewItem& option) const {
        const auto group = list_.isActiveWindow() ? QPalette::Active : QPalette::Inactive;
        return option.palette.color(group, isSelected(option) ? QPalette::HighlightedText : QPalette::Text);
    }

    static void drawLine(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place,
                         Qt::Alignment alignment, const QString& text) {
        painter.drawText(place, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                         option.fontMetrics.elidedText(text, Qt::ElideRight, place.width()));
    }

    void paintRow(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                  const QRect& area) const {
        const int lineHeight = option.fontMetrics.height();
        drawIcon(painter, option, index, {area.left(), area.top(), smallIconSize, lineHeight});
        const QRect name(area.left() + smallIconSize + margin, area.top(),
                         area.width() - smallIconSize - margin, lineHeight);
        QColor color = textColor(option);
        painter.setPen(color);
        drawLine(painter, option, name, Qt::AlignLeft, index.data().toString());
        color.setAlphaF(0.7F);
        painter.setPen(color);
        drawLine(painter, option, name.translated(0, lineHeight), Qt::AlignLeft,
                 index.siblingAtColumn(stateColumn).data().toString());
    }

    void paintIcon(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                   const QRect& area) const {
        drawIcon(painter, option, index, {area.left(), area.top(), area.width(), largeIconSize});
        const int lineHeight = option.fontMetrics.height();
        painter.setPen(textColor(option));
        drawLine(painter, option, {area.left(), area.bottom() + 1 - lineHeight, area.width(), lineHeight},
                 Qt::AlignHCenter, index.data().toString());
    }

    const SitesList& list_;
};

} // namespace

SitesModel::SitesModel(const ImageLists& images, QObject* parent)
    : QAbstractTableModel(parent), images_(images) {}

int SitesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int SitesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 2;
}

QVariant SitesModel::data(const QModelIndex& index, int role) const {
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == nameColumn ? row.name : row.state;
    case Qt::DecorationRole:
        return images_.image(row.connected ? "site-connected" : "site-disconnected");
    case Qt::ToolTipRole:
        return toolTipOf(row.name + QStringLiteral(": ") + row.state);
    case Qt::AccessibleTextRole:
        return row.name + QStringLiteral(": ") + row.state;
    default:
        return {};
    }
}

void SitesModel::addSite(const QString& name) {
    const int row = rowCount();
    beginInsertRows({}, row, row);
    rows_.push_back({.name = name, .state = {}, .connected = false});
    endInsertRows();
}

void SitesModel::setName(int row, const QString& name) {
    rows_[static_cast<std::size_t>(row)].name = name;
    emit dataChanged(index(row, nameColumn), index(row, nameColumn));
}

void SitesModel::setState(int row, const QString& text, bool connected) {
    Row& target = rows_[static_cast<std::size_t>(row)];
    if (target.state == text && target.connected == connected) {
        return;
    }
    target.state = text;
    target.connected = connected;
    emit dataChanged(index(row, nameColumn), index(row, stateColumn));
}

SitesList::SitesList(SitesModel& model, QWidget* parent) : QListView(parent) {
    setModel(&model);
    setItemDelegate(new SiteDelegate(*this, this));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAccessibleName(tr("Sites"));
    setReportView(true);
}

void SitesList::setReportView(bool report) {
    setViewMode(report ? QListView::ListMode : QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setWordWrap(!report);
    // Icons stand in columns; one column fits the list at its first width.
    const QSize cell(largeIconSize + 9 * margin, largeIconSize + fontMetrics().height() + 3 * margin);
    setGridSize(report ? QSize() : cell);
    const int size = report ? smallIconSize : largeIconSize;
    setIconSize({size, size});
    scheduleDelayedItemsLayout();
}

void SitesList::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint place = byKey ? visualRect(currentIndex()).bottomLeft() : event->pos();
    emit menuRequested(viewport()->mapToGlobal(place));
}

} // namespace corvel

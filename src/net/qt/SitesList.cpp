#include "net/qt/SitesList.h"

#include "widgets/Icons.h"

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

// Draws a row of the report view: the icon, the name, and below it the state in the quiet text colour.
class SiteDelegate : public QStyledItemDelegate {
  public:
    explicit SiteDelegate(const SitesList& list, QObject* parent)
        : QStyledItemDelegate(parent), list_(list) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        if (!list_.isReportView()) {
            return QStyledItemDelegate::sizeHint(option, index);
        }
        return {option.rect.width(), 2 * option.fontMetrics.height() + 2 * margin};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        if (!list_.isReportView()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        const bool isSelected = (option.state & QStyle::State_Selected) != 0;
        list_.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, &list_);
        const QRect area = option.rect.adjusted(margin, margin, -margin, -margin);
        const int lineHeight = option.fontMetrics.height();
        const QRect icon(area.left(), area.top() + (lineHeight - smallIconSize) / 2, smallIconSize,
                         smallIconSize);
        index.data(Qt::DecorationRole).value<QIcon>().paint(painter, icon);

        const QRect texts = area.adjusted(smallIconSize + margin, 0, 0, 0);
        const auto group = list_.isActiveWindow() ? QPalette::Active : QPalette::Inactive;
        const QColor strong =
            option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
        QColor quiet = strong;
        quiet.setAlphaF(0.7F);
        const auto draw = [&](int line, const QColor& color, const QString& text) {
            const QRect place(texts.left(), texts.top() + line * lineHeight, texts.width(), lineHeight);
            painter->setPen(color);
            painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                              option.fontMetrics.elidedText(text, Qt::ElideRight, place.width()));
        };
        draw(0, strong, index.data().toString());
        draw(1, quiet, index.siblingAtColumn(stateColumn).data().toString());
    }

  private:
    const SitesList& list_;
};

} // namespace

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
        return icon(row.connected ? "site-connected" : "site-disconnected");
    case Qt::ToolTipRole:
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
    const QSize cell(largeIconSize + 9 * margin, largeIconSize + 3 * fontMetrics().height());
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

#include "net/qt/SitesList.h"

#include "net/Statistics.h"
#include "widgets/Colours.h"
#include "widgets/Icons.h"
#include "widgets/ImageLists.h"
#include "widgets/TextConversion.h"

#include <QBuffer>
#include <QContextMenuEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace corvel {

namespace {

constexpr int nameColumn = 0;
constexpr int stateColumn = 1;
constexpr int encryptionRole = Qt::UserRole; // of the state: the line of its tip, and the same as markup
constexpr int markupRole = encryptionRole + 1;
constexpr int siteRole = markupRole + 1; // of the name: the site's index
constexpr int markRole = siteRole + 1;   // of the name: whether it is marked
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
        if (list_.hasFocus() && index == list_.currentIndex()) {
            drawFocus(*painter, option.rect, isSelected(option), list_);
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

    // At the right edge of a line; gives what the line has left.
    static QRect drawMark(QPainter& painter, const QModelIndex& index, const QRect& line) {
        if (!index.data(markRole).toBool()) {
            return line;
        }
        icon("warning").paint(&painter, line.right() + 1 - smallIconSize, line.top(), smallIconSize,
                              line.height());
        return line.adjusted(0, 0, -(smallIconSize + margin), 0);
    }

    void paintRow(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                  const QRect& area) const {
        const int lineHeight = option.fontMetrics.height();
        drawIcon(painter, option, index, {area.left(), area.top(), smallIconSize, lineHeight});
        const QRect name(area.left() + smallIconSize + margin, area.top(),
                         area.width() - smallIconSize - margin, lineHeight);
        QColor color = textColor(option);
        painter.setPen(color);
        drawLine(painter, option, drawMark(painter, index, name), Qt::AlignLeft, index.data().toString());
        color.setAlphaF(0.7F);
        painter.setPen(color);
        drawLine(painter, option, name.translated(0, lineHeight), Qt::AlignLeft,
                 index.siblingAtColumn(stateColumn).data().toString());
    }

    void paintIcon(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                   const QRect& area) const {
        drawIcon(painter, option, index, {area.left(), area.top(), area.width(), largeIconSize});
        const int lineHeight = option.fontMetrics.height();
        drawMark(painter, index, {area.left(), area.top(), area.width(), lineHeight});
        painter.setPen(textColor(option));
        drawLine(painter, option, {area.left(), area.bottom() + 1 - lineHeight, area.width(), lineHeight},
                 Qt::AlignHCenter, index.data().toString());
    }

    const SitesList& list_;
};

// A lock as the markup of a tool tip takes it; empty for none.
QString lockMarkup(EncryptionStatus::Lock lock) {
    const std::string_view image = lockImage(lock);
    if (image.empty()) {
        return {};
    }
    QByteArray picture;
    QBuffer buffer(&picture);
    icon(image).pixmap(2 * smallIconSize).save(&buffer, "PNG");
    return QStringLiteral(
               "<img width=%1 height=%1 style='vertical-align:middle' src='data:image/png;base64,%2'> ")
        .arg(smallIconSize)
        .arg(QLatin1String(picture.toBase64()));
}

} // namespace

SitesList::SitesList(const ImageLists& images, QWidget* parent) : QListView(parent), images_(images) {
    setModel(&sites_);
    setItemDelegate(new SiteDelegate(*this, this));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAccessibleName(tr("Sites"));
    setReportView(true);
}

void SitesList::addSite(int site, const QString& name) {
    auto* const item = new QStandardItem(images_.image("site-disconnected"), name);
    item->setData(site, siteRole);
    sites_.appendRow({item, new QStandardItem(QString())});
    describe(sites_.rowCount() - 1);
}

void SitesList::removeSite(int site) {
    if (const int row = rowOf(site); row >= 0) {
        sites_.removeRow(row);
    }
}

int SitesList::siteAt(const QModelIndex& row) {
    return row.siblingAtColumn(nameColumn).data(siteRole).toInt();
}

// Rows only ever go: a site's is its index less one, or before it.
int SitesList::rowOf(int site) const {
    int row = std::min(site, sites_.rowCount()) - 1;
    while (row >= 0 && siteAt(sites_.index(row, nameColumn)) != site) {
        --row;
    }
    return row;
}

void SitesList::setName(int site, const QString& name) {
    if (const int row = rowOf(site); row >= 0) {
        sites_.item(row, nameColumn)->setText(name);
        describe(row);
    }
}

void SitesList::setState(int site, const QString& text, bool connected, const EncryptionStatus& encryption) {
    const int row = rowOf(site);
    if (row < 0) {
        return;
    }
    QStandardItem& state = *sites_.item(row, stateColumn);
    const QString line = fromCore(encryption.text);
    if (state.text() != text || state.data(encryptionRole).toString() != line) {
        state.setText(text);
        state.setData(line, encryptionRole);
        state.setData(lockMarkup(encryption.lock) + line.toHtmlEscaped(), markupRole);
        sites_.item(row, nameColumn)
            ->setIcon(images_.image(connected ? "site-connected" : "site-disconnected"));
        describe(row);
    }
}

void SitesList::setMarked(int site, bool isMarked) {
    const int row = rowOf(site);
    if (row >= 0 && sites_.item(row, nameColumn)->data(markRole).toBool() != isMarked) {
        sites_.item(row, nameColumn)->setData(isMarked, markRole);
        describe(row);
    }
}

void SitesList::describe(int row) {
    QStandardItem& name = *sites_.item(row, nameColumn);
    const QStandardItem& state = *sites_.item(row, stateColumn);
    const QString mark = name.data(markRole).toBool() ? tr(", an error that was not looked at") : QString();
    const QString whole = name.text() + QStringLiteral(": ") + state.text() + mark;
    const QString encryption = state.data(encryptionRole).toString();
    name.setToolTip(encryption.isEmpty()
                        ? toolTipOf(whole)
                        : QStringLiteral("<p style='white-space:pre'>%1<br>%2</p>")
                              .arg(tipLines(whole).toHtmlEscaped(), state.data(markupRole).toString()));
    name.setAccessibleText(encryption.isEmpty() ? whole : whole + QStringLiteral(", ") + encryption);
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

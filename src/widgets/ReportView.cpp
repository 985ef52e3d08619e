#include "widgets/ReportView.h"

#include "widgets/Colours.h"
#include "widgets/Forms.h"
#include "widgets/StoreValues.h"

#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

constexpr int rowSpacing = 8; // pixels of a row beyond its text or icon
constexpr int iconPixels = 16;

// Gives rows their height and edits labels in a box of one line.
class ReportDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const int height = std::max(option.fontMetrics.height(), iconPixels) + rowSpacing;
        return {QStyledItemDelegate::sizeHint(option, index).width(), height};
    }

    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const ReportSource& source = static_cast<const ReportModel*>(index.model())->source();
        if (source.isDimmed && source.isDimmed()) {
            option->state.setFlag(QStyle::State_Enabled, false);
        }
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                          const QModelIndex& /*index*/) const override {
        auto* editor = new OneLineEdit(parent);
        editor->setObjectName(QStringLiteral("txtLabel"));
        editor->setAccessibleName(tr("Name"));
        return editor;
    }

    // The box may show a label with line breaks without them: what nobody has touched is no new label.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        if (static_cast<QLineEdit*>(editor)->isModified()) {
            QStyledItemDelegate::setModelData(editor, model, index);
        }
    }
};

} // namespace

ReportView::ReportView(QWidget* parent) : QTreeView(parent), model_(new ReportModel(this)) {
    setModel(model_);
    setItemDelegate(new ReportDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setIconSize({iconPixels, iconPixels});
    setContextMenuPolicy(Qt::DefaultContextMenu);
    setTabKeyNavigation(false);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(false);
    header()->setHighlightSections(false);
    connect(header(), &QHeaderView::sectionClicked, this, &ReportView::headerClicked);
    connect(header(), &QHeaderView::sectionResized, this, [this](int column) {
        if (!isResizing_) {
            chosenWidths_.insert(column);
        }
    });
    connect(model_, &ReportModel::labelEdited, this, &ReportView::labelEdited);
    connect(model_, &ReportModel::checkToggled, this, &ReportView::checkToggled);
}

void ReportView::setSource(ReportSource source, CurrentRow currentRow) {
    const int before = this->currentRow();
    const int kept = std::min(before, source.rows - 1);
    isResizing_ = true;
    texts_ = {};
    ShownRows shown = matching(source, source.rows, false);
    model_->setSource(std::move(source), std::move(shown));
    const std::vector<ReportColumn>& columns = model_->source().columns;
    for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
        header()->setSectionHidden(column, columns[static_cast<std::size_t>(column)].hidden);
    }
    isResizing_ = false;
    if (currentRow == CurrentRow::keep && kept >= 0) {
        setCurrentRow(kept);
    } else if (before >= 0) {
        // A reset takes the current row away without a word.
        emit currentRowChanged(-1);
    }
    expectFilter(isFilterExpected_);
    emit rowCountsChanged();
}

void ReportView::refresh() {
    texts_ = {};
    if (!words_.empty()) {
        showMatching(source().rows, false);
        return;
    }
    // Only the rows in sight: the others are not remembered anywhere, and announcing 100,000 of them takes
    // the tree view longer than showing them anew.
    const auto [first, last] = rowsInSight();
    model_->refresh(first, last);
}

void ReportView::refreshWhere(const std::function<bool(int row)>& hasChanged) {
    texts_ = {};
    if (!words_.empty()) {
        refresh();
        return;
    }
    const auto [first, last] = rowsInSight();
    for (int row = std::max(first, 0); row <= last; ++row) {
        if (hasChanged(row)) { // all rows are shown
            model_->refresh(row, row);
            // Its colour reaches past its cells.
            const QRect cell = visualRect(model_->index(row, header()->logicalIndex(0)));
            viewport()->update(0, cell.top(), viewport()->width(), cell.height());
        }
    }
}

void ReportView::growTo(int rows) {
    if (rows <= source().rows) {
        return;
    }
    if (words_.empty()) {
        model_->growTo(rows);
        emit rowCountsChanged();
    } else {
        texts_ = {};
        showMatching(rows, false);
    }
}

// The first and the last row of which something is in sight; the first is -1 where there is none.
std::pair<int, int> ReportView::rowsInSight() const {
    const int last = indexAt({0, viewport()->height() - 1}).row();
    return {indexAt({0, 0}).row(), last >= 0 ? last : model_->rowCount() - 1};
}

int ReportView::currentRow() const {
    return model_->sourceRow(currentIndex());
}

void ReportView::setCurrentRow(int row) {
    const QModelIndex index = indexOf(row);
    if (index.isValid()) {
        setCurrentIndex(index);
        scrollTo(index);
    } else {
        selectionModel()->clear();
    }
}

void ReportView::setMultiSelection(bool isMultiple) {
    setSelectionMode(isMultiple ? ExtendedSelection : SingleSelection);
}

std::vector<int> ReportView::selectedRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.push_back(model_->sourceRowOf(row));
        }
    }
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void ReportView::setSelectedRows(const std::vector<int>& rows) {
    const int lastColumn = model_->columnCount() - 1;
    std::vector<int> shown;
    for (const int row : rows) {
        if (const int place = model_->rowOfSource(row); place >= 0) {
            shown.push_back(place);
        }
    }
    QItemSelection selection;
    for (auto first = shown.begin(); first != shown.end();) {
        auto end = first + 1;
        while (end != shown.end() && *end == *(end - 1) + 1) {
            ++end;
        }
        selection.append(
            QItemSelectionRange(model_->index(*first, 0), model_->index(*(end - 1), lastColumn)));
        first = end;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

bool ReportView::isSelected(int row) const {
    return selectionModel()->isSelected(indexOf(row));
}

void ReportView::setPlaceholder(const QString& text) {
    if (text == placeholder_) {
        return;
    }
    placeholder_ = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void ReportView::setSortArrow(int column, Qt::SortOrder order) {
    header()->setSortIndicatorShown(column >= 0);
    header()->setSortIndicator(column, order);
    if (column >= 0 && !isWidthChosen(column)) {
        resizeColumn(column, std::max(header()->sectionSize(column), header()->sectionSizeHint(column)));
    }
}

void ReportView::fitColumns(int first, int last) {
    const auto [firstInSight, lastInSight] = rowsInSight();
    const std::vector<std::vector<int>> rows = rowsToMeasure(model_->source(), first, last);
    for (int column = first; column <= last; ++column) {
        if (isColumnHidden(column)) {
            continue;
        }
        QStringList texts = model_->source().columns[static_cast<std::size_t>(column)].room;
        const auto add = [&](int row) { texts.append(model_->source().text(row, column)); };
        std::ranges::for_each(rows[static_cast<std::size_t>(column - first)], add);
        for (int row = std::max(firstInSight, 0); row <= lastInSight; ++row) {
            add(model_->sourceRowOf(row));
        }
        resizeColumn(column, std::max(widestCell(column, texts), header()->sectionSizeHint(column)));
    }
}

void ReportView::resizeColumn(int column, int pixels) {
    isResizing_ = true;
    header()->resizeSection(column, pixels);
    isResizing_ = false;
    chosenWidths_.remove(column);
}

// What the column needs to show each of texts whole.
int ReportView::widestCell(int column, const QStringList& texts) const {
    const auto width = [this](const QString& text) { return fontMetrics().horizontalAdvance(text); };
    const auto widest = std::ranges::max_element(texts, {}, width);
    return cellWidth(column, widest == texts.end() ? QString() : *widest);
}

// What the style needs to show text in the column without cutting it.
int ReportView::cellWidth(int column, const QString& text) const {
    QStyleOptionViewItem option = cellOption(column);
    option.text = text;
    return style()->sizeFromContents(QStyle::CT_ItemViewItem, &option, {}, this).width();
}

// What a cell of the column consists of.
QStyleOptionViewItem ReportView::cellOption(int column) const {
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.features = QStyleOptionViewItem::HasDisplay;
    if (column == 0 && model_->source().icon) {
        option.features |= QStyleOptionViewItem::HasDecoration;
        option.decorationSize = iconSize();
    }
    option.features.setFlag(QStyleOptionViewItem::HasCheckIndicator, column == 0 && model_->source().checked);
    return option;
}

bool ReportView::isOnCheckBox(const QModelIndex& index, const QPoint& position) const {
    QStyleOptionViewItem option = cellOption(index.column());
    option.rect = visualRect(index);
    return (option.features & QStyleOptionViewItem::HasCheckIndicator) &&
           style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(position);
}

void ReportView::letColumnsMove(int fixed) {
    QHeaderView& header = *this->header();
    header.setSectionsMovable(true);
    for (int column = 0; column < fixed; ++column) {
        header.setSectionResizeMode(column, QHeaderView::Fixed);
    }
    // Before the drag begins: a fixed column does not even seem to come along.
    QObject::connect(&header, &QHeaderView::sectionPressed, &header,
                     [&header, fixed](int column) { header.setSectionsMovable(column >= fixed); });
    QObject::connect(&header, &QHeaderView::sectionMoved, &header,
                     [&header, fixed](int column, int /*from*/, int to) {
                         if (column >= fixed && to < fixed) {
                             header.moveSection(to, fixed);
                         }
                     });
}

int ReportView::columnUnits(int column) const {
    return unitsFromPixels(header()->sectionSize(column));
}

void ReportView::setColumnUnits(int column, int units) {
    resizeColumn(column, pixelsFromUnits(units));
}

int ReportView::widthUnits() const {
    return unitsFromPixels(width());
}

void ReportView::editLabel(int row) {
    const QModelIndex index = indexOf(row);
    if (model_->flags(index) & Qt::ItemIsEditable) {
        scrollTo(index);
        edit(index);
    }
}

void ReportView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    const bool isAllHidden = !words_.empty() && rowsShown() <= 0 && rowsInAll() > 0;
    const QString text = isAllHidden ? tr("Nothing here matches the filter.") : placeholder_;
    if ((model_->rowCount() > 0 && !isAllHidden) || text.isEmpty()) {
        return;
    }
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QRect middle = viewport()->rect().marginsRemoved({16, 16, 16, 16});
    painter.drawText(middle, Qt::AlignCenter | Qt::TextWordWrap, text);
}

// A row's colour reaches to the right edge, past its last column. The row with the focus has a frame that a
// selection does not hide.
void ReportView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    if (model_->source().colours) {
        const QColor background = model_->source().colours(model_->sourceRow(index)).background;
        if (background.isValid()) {
            painter->fillRect(option.rect, background);
        }
    }
    QTreeView::drawRow(painter, option, index);
    if (hasFocus() && index.row() == currentIndex().row()) {
        drawFocus(*painter, option.rect, selectionModel()->isSelected(index), *this);
    }
}

void ReportView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (isAnnouncing_ && current.row() != previous.row()) {
        emit currentRowChanged(model_->sourceRow(current));
    }
}

} // namespace corvel

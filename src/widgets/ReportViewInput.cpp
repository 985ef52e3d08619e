#include "common/Text.h"
#include "widgets/ReportView.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyleHints>

#include <algorithm>
#include <utility>

// What keys and mouse do in a list.

namespace corvel {

void ReportView::keyPressEvent(QKeyEvent* event) {
    if (state() == EditingState) {
        // A key that the label's editor was done with: the Enter that ends the edit must not act on the row.
        return;
    }
    if (event->matches(QKeySequence::Copy)) {
        if (const QString text = selectedText(); !text.isEmpty()) {
            QGuiApplication::clipboard()->setText(text);
        }
        return;
    }
    const int before = currentRow();
    if (event->key() == Qt::Key_Space && before >= 0 && model_->source().checked) {
        // In whichever column the row was clicked.
        emit checkToggled(before);
        return;
    }
    QTreeView::keyPressEvent(event);
    if (before >= 0 && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        // It belongs to the row, not to the default button of a dialog around the list.
        event->accept();
    }
    if (currentRow() != before && currentRow() >= 0) {
        emit rowPicked(currentRow());
    }
    if (event->key() == Qt::Key_Menu) {
        // Where the platform makes a context-menu event of the key as well, the open menu gets that one.
        requestMenuAtRow();
    } else if (!(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) {
        emit keyPressed(static_cast<Qt::Key>(event->key()), currentRow());
    }
}

void ReportView::mousePressEvent(QMouseEvent* event) {
    QTreeView::mousePressEvent(event);
    pressedRow_ = model_->sourceRow(indexAt(event->position().toPoint()));
    if (pressedRow_ >= 0) {
        emit rowPicked(pressedRow_);
    }
}

// A mouse that slips while its button is down takes the highlight along.
void ReportView::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    const int pressed = std::exchange(pressedRow_, -1);
    if (pressed >= 0 && currentRow() >= 0 && currentRow() != pressed) {
        emit rowPicked(currentRow());
    }
}

void ReportView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeView::mouseDoubleClickEvent(event);
    const QPoint position = event->position().toPoint();
    const QModelIndex index = indexAt(position);
    if (index.isValid() && event->button() == Qt::LeftButton && !isOnCheckBox(index, position)) {
        emit rowDoubleClicked(model_->sourceRow(index));
    }
}

void ReportView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Mouse) {
        requestMenuAtRow();
        return;
    }
    const QModelIndex index = indexAt(event->pos());
    const bool isSelected = selectionModel()->isSelected(index);
    if (index.isValid() && (model_->sourceRow(index) != currentRow() || !isSelected)) {
        constexpr auto alone = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
        selectionModel()->setCurrentIndex(index, isSelected ? QItemSelectionModel::NoUpdate : alone);
        emit rowPicked(model_->sourceRow(index));
    }
    emit contextMenuRequested(model_->sourceRow(index), event->globalPos());
}

void ReportView::requestMenuAtRow() {
    const int row = currentRow();
    scrollTo(currentIndex());
    const QRect cell = row >= 0 ? visualRect(indexOf(row)) : QRect();
    const QPoint position = row >= 0 ? QPoint(cell.left() + cell.height(), cell.center().y()) : QPoint(0, 0);
    emit contextMenuRequested(row, viewport()->mapToGlobal(position));
}

namespace {

// Ids and other numbers stand at the right.
int nameColumnOf(const ReportSource& source) {
    if (source.nameColumn >= 0) {
        return source.nameColumn;
    }
    const auto name = std::ranges::find_if(
        source.columns, [](const ReportColumn& column) { return column.alignment != Qt::AlignRight; });
    return name == source.columns.end() ? 0 : static_cast<int>(name - source.columns.begin());
}

} // namespace

// A letter that is typed again and again goes from one name that begins with it to the next.
void ReportView::keyboardSearch(const QString& typed) {
    const int rows = model_->rowCount();
    if (rows == 0) {
        return;
    }
    const bool goesOn = !typed_.empty() && typedLast_.isValid() &&
                        !typedLast_.hasExpired(QGuiApplication::styleHints()->keyboardInputInterval());
    const std::string letter = foldCase(toCore(typed));
    const bool isRepeated = goesOn && typed_ == letter;
    typed_ = goesOn && !isRepeated ? typed_ + letter : letter;
    typedLast_.start();
    // More letters of a name leave the row that has them.
    const int start =
        std::max(currentIndex().row(), 0) + (currentIndex().isValid() && (!goesOn || isRepeated) ? 1 : 0);
    const int column = nameColumnOf(source());
    for (int step = 0; step < rows; ++step) {
        const int row = model_->sourceRowOf((start + step) % rows);
        std::string name;
        appendFolded(name, toCore(source().text(row, column)));
        if (name.starts_with(typed_)) {
            setCurrentRow(row);
            return;
        }
    }
}

} // namespace corvel

#include "widgets/ReportView.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>
#include <utility>

// Which rows of a list are shown, and what of them goes to the clipboard.

namespace corvel {

void ReportView::setFilter(const QString& text) {
    if (text == filter_) {
        return;
    }
    filter_ = text;
    std::vector<std::string> words = filterWords(toCore(text));
    const bool isNarrower = !words_.empty() && narrows(words, words_);
    words_ = std::move(words);
    if (words_.empty() && !isFilterExpected_) {
        texts_ = {};
    }
    showMatching(source().rows, isNarrower);
    emit filtered();
}

// Those of so many rows of source that have the words. isNarrower: none of them is hidden now.
ShownRows ReportView::matching(const ReportSource& source, int rows, bool isNarrower) {
    if (words_.empty()) {
        return {};
    }
    makeTexts(source, rows);
    return isNarrower && model_->shown() ? matchingRows(texts_, words_, *model_->shown(), source.pinned)
                                         : matchingRows(texts_, words_, source.pinned);
}

void ReportView::expectFilter(bool isExpected) {
    isFilterExpected_ = isExpected;
    if (isExpected) {
        // Not at once: the focus may come while the owner has yet to hear that its rows are gone.
        QTimer::singleShot(0, this, &ReportView::makeSomeTexts);
    } else if (words_.empty()) {
        texts_ = {};
    }
}

void ReportView::makeSomeTexts() {
    constexpr int rowsInATurn = 10000;
    if (isFilterExpected_ && texts_.rows() < source().rows) {
        makeTexts(source(), std::min(source().rows, texts_.rows() + rowsInATurn));
        QTimer::singleShot(0, this, &ReportView::makeSomeTexts);
    }
}

// Completes the texts of so many rows.
void ReportView::makeTexts(const ReportSource& source, int rows) {
    const int columns = static_cast<int>(source.columns.size());
    while (texts_.rows() < rows) {
        const int row = texts_.rows();
        for (int column = 0; column < columns; ++column) {
            const ReportColumn& shown = source.columns[static_cast<std::size_t>(column)];
            if (shown.hidden || isColumnHidden(column)) {
                continue;
            }
            if (source.sentText) {
                texts_.addCell(source.sentText(row, column));
            } else {
                texts_.addCell(toCore(source.text(row, column)));
            }
        }
        if (source.alsoFound) {
            texts_.addCell(source.alsoFound(row));
        }
        texts_.endRow();
    }
}

// Shows what matches of so many rows. What is selected, and the current row, stay where they are shown.
void ReportView::showMatching(int rows, bool isNarrower) {
    const int current = currentRow();
    const std::vector<int> selected = selectedRows();
    ShownRows shown = matching(source(), rows, isNarrower);
    if (shown != model_->shown() || rows != source().rows) {
        const QScopedValueRollback quiet(isAnnouncing_, false);
        const QScopedValueRollback resizing(isResizing_, true);
        model_->showRows(rows, std::move(shown));
        if (isShown(current)) {
            setCurrentRow(current);
        }
        setSelectedRows(selected);
    } else {
        viewport()->update();
    }
    if (currentRow() != current) {
        emit currentRowChanged(currentRow());
    }
    emit rowCountsChanged();
}

void ReportView::enterByKey() {
    const bool isOnMatch = currentRow() >= (words_.empty() ? 0 : source().pinned);
    if (!isOnMatch && rowsShown() > 0) {
        const int row = model_->sourceRowOf(source().pinned);
        setCurrentRow(row);
        emit rowPicked(row);
    }
    setFocus();
}

QString ReportView::selectedText() const {
    const std::vector<int> rows = selectedRows();
    if (rows.empty()) {
        return {};
    }
    std::vector<int> columns; // in the order in which they are seen
    for (int place = 0; place < header()->count(); ++place) {
        if (const int column = header()->logicalIndex(place); !isColumnHidden(column)) {
            columns.push_back(column);
        }
    }
    QStringList lines;
    const auto addLine = [&lines, &columns](const auto& textIn) {
        QStringList cells;
        for (const int column : columns) {
            cells.append(textIn(column));
        }
        lines.append(cells.join(QLatin1Char('\t')));
    };
    addLine([this](int column) { return source().columns[static_cast<std::size_t>(column)].header; });
    for (const int row : rows) {
        addLine([this, row](int column) { return source().text(row, column).trimmed(); });
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace corvel

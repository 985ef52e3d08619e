#pragma once

#include "common/RowFilter.h"
#include "widgets/ReportModel.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTreeView>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace corvel {

// The view of every list: rows of columns, selected as a whole, with the icon in the first column. It shows a
// ReportSource and reports what a person does; it orders, edits and sends nothing itself. The owner gives it
// its objectName and its accessible name. All rows are rows of the source, whatever a filter hides; a hidden
// row is neither the current one nor selected. Ctrl+C copies the selected rows, and letters go to a row by
// its name.
class ReportView : public QTreeView {
    Q_OBJECT

  public:
    // What becomes of the current row when the source is replaced: it is cleared, or the row of the same
    // number becomes current again (the last row, if there are fewer now).
    enum class CurrentRow { clear, keep };

    explicit ReportView(QWidget* parent = nullptr);

    // Shows source in place of what there was; an edit under way is dropped. Column widths stay.
    void setSource(ReportSource source, CurrentRow currentRow = CurrentRow::clear);
    const ReportSource& source() const { return model_->source(); }

    // Paints again after cells changed in place or rows changed places; the number of rows must be the same.
    // The cost does not depend on the number of rows, unless there is a filter: then other rows may match.
    void refresh();

    // As refresh, for the rows in sight of which hasChanged holds and no others.
    void refreshWhere(const std::function<bool(int row)>& hasChanged);

    // Shows rows that the source has gained behind its others. rows: how many it has now, no fewer than
    // before. The current row and the place that is scrolled to stay.
    void growTo(int rows);

    // Hides the rows that do not have every word of text in one of the columns that are seen. It holds until
    // another one is set, whatever rows there are by then.
    void setFilter(const QString& text);
    const QString& filter() const { return filter_; }
    // Whether a person may be about to type a filter. Then what it looks at is made beforehand, in turns of
    // its own, so that the first key takes no longer than the others.
    void expectFilter(bool isExpected);
    bool isShown(int row) const { return model_->rowOfSource(row) >= 0; }
    // How many rows there are, and how many of them are shown; the pinned ones do not count.
    int rowsInAll() const { return source().rows - source().pinned; }
    int rowsShown() const { return model_->rowCount() - source().pinned; }
    // Gives the list the focus. Where no row is the current one, or with a filter none that matches, the
    // first becomes it, as if a key had gone there.
    void enterByKey();

    // The selected rows for a clipboard: a line for the headers and one for each row, tabs between what
    // stands in the columns that are seen. Empty where none is selected.
    QString selectedText() const;

    // The row that acts as selected, -1 where there is none. setCurrentRow scrolls to it and announces it;
    // a number that is no row, or a hidden one, clears the selection.
    int currentRow() const;
    void setCurrentRow(int row);

    // Off at first: one row can be selected at a time.
    void setMultiSelection(bool isMultiple);
    // In ascending order. setSelectedRows leaves the current row the current one, whether it is among them or
    // not.
    std::vector<int> selectedRows() const;
    void setSelectedRows(const std::vector<int>& rows);
    bool isSelected(int row) const;

    // The text in the middle of an empty list; plain text.
    void setPlaceholder(const QString& text);

    // Which header carries the arrow, and has the room for it unless a person has chosen its width; no header
    // with -1. The rows are the owner's to order.
    void setSortArrow(int column, Qt::SortOrder order);

    // Makes columns as wide as the larger of header and widest cell, which in a long list is looked for among
    // the longest texts and the rows in sight. Hidden columns are left alone.
    void fitColumns(int first, int last);

    // Lets a person drag the columns to other places, all but those with a number below fixed: these stay in
    // front, in their order and of the width that they are given.
    void letColumnsMove(int fixed);
    // Whether a person has given the column its width, since it was last fitted or set.
    bool isWidthChosen(int column) const { return chosenWidths_.contains(column); }
    // Widths in units of 1/1440 inch; 0 for a hidden column.
    int columnUnits(int column) const;
    void setColumnUnits(int column, int units);
    // The width of the whole list.
    int widthUnits() const;

    // Starts editing the row's label in its place, if the source allows it.
    void editLabel(int row);

    void keyboardSearch(const QString& typed) override;

  signals:
    void headerClicked(int column);
    // How many rows there are, or are shown, may have changed; and the same because of setFilter alone.
    void rowCountsChanged();
    void filtered();
    // The current row became another one, in whatever way; -1 for none.
    void currentRowChanged(int row);
    // A person went to a row: by a key, by a mouse click even where it was the current row already, or by
    // dragging the mouse to it.
    void rowPicked(int row);
    void rowDoubleClicked(int row); // but not for its box
    // A key went down over the list, without Ctrl, Alt or Meta; row is the current one, -1 for none.
    void keyPressed(Qt::Key key, int row);
    // row is the one under the mouse, or the current row for the context-menu key; -1 for none. A row under
    // the mouse is the current row already.
    void contextMenuRequested(int row, const QPoint& globalPosition);
    // A person clicked the box of a row, or pressed the space bar on a row with a box. The list still shows
    // the old tick.
    void checkToggled(int row);
    // A person ended an edit of a label with another text. The list still shows the old label.
    void labelEdited(int row, const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

  private:
    QModelIndex indexOf(int row) const { return model_->index(model_->rowOfSource(row), 0); }
    void makeSomeTexts();
    void makeTexts(const ReportSource& source, int rows);
    ShownRows matching(const ReportSource& source, int rows, bool isNarrower);
    void showMatching(int rows, bool isNarrower);
    std::pair<int, int> rowsInSight() const;
    void requestMenuAtRow();
    int widestCell(int column, const QStringList& texts) const;
    int cellWidth(int column, const QString& text) const;
    void resizeColumn(int column, int pixels);
    QStyleOptionViewItem cellOption(int column) const;
    bool isOnCheckBox(const QModelIndex& index, const QPoint& position) const;

    ReportModel* model_; // owned as a child
    QSet<int> chosenWidths_;
    bool isResizing_ = false; // the widths are changed by the program, not by a person
    QString placeholder_;
    int pressedRow_ = -1; // under the mouse as its button went down
    QString filter_;
    std::vector<std::string> words_; // of the filter
    bool isFilterExpected_ = false;
    RowTexts texts_;           // of the first rows or all, while there is a filter or may be one
    bool isAnnouncing_ = true; // that another row is the current one
    std::string typed_;        // the letters of the name that is looked for
    QElapsedTimer typedLast_;
};

} // namespace corvel

#pragma once

#include "widgets/TextConversion.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvel {

struct ReportColumn {
    QString header;
    Qt::Alignment alignment = Qt::AlignLeft;
    bool hidden = false;
    QStringList room = {}; // texts for which a fitted column has room beside those of its cells
};

// How a row is coloured; an invalid colour leaves the platform's.
struct RowColours {
    QColor text = {};
    QColor background = {};
};

// The content of one list, as a value: the functions look things up in the owner's records whenever a cell
// is painted or measured, and must stay callable until another source takes this one's place. Rows and
// columns count from 0. Every function but text may be empty.
struct ReportSource {
    int rows = 0;
    int pinned = 0;      // so many of the first rows a filter neither hides nor counts
    int nameColumn = -1; // in which typed letters are looked for; -1: the first that holds no numbers
    std::vector<ReportColumn> columns = {};
    std::function<QString(int row, int column)> text = {};
    // For long lists: what was sent for a cell, so that columns are fitted without making every text.
    std::function<std::string_view(int row, int column)> sentText = {};
    // What of a row a filter finds beside what was sent, in the server's bytes.
    std::function<std::string(int row)> alsoFound = {};
    std::function<QIcon(int row)> icon = {};
    std::function<QString(int row)> iconText = {}; // what the icon says, for its tip and for screen readers
    std::function<RowColours(int row)> colours = {};
    // Whether the rows are shown as ones that nothing can be done with now.
    std::function<bool()> isDimmed = {};
    // Whether the box before the row's first column is ticked. Where it is empty, there are no boxes.
    std::function<bool(int row)> checked = {};
    // What the editor of the row's first column starts with. Where it is empty, nothing can be edited.
    std::function<QString(int row)> editText = {};
};

// The content of a list whose rows are records with a text for each of the columns. rows:
// borrowed, must outlive the source as it is.
template <typename Row>
ReportSource sourceOf(const std::vector<Row>& rows, std::vector<ReportColumn> columns,
                      std::vector<std::string Row::*> texts) {
    ReportSource source = {.rows = static_cast<int>(rows.size()), .columns = std::move(columns)};
    source.sentText = [&rows, texts = std::move(texts)](int row, int column) -> std::string_view {
        return rows[static_cast<std::size_t>(row)].*texts[static_cast<std::size_t>(column)];
    };
    source.text = [sent = source.sentText](int row, int column) { return cellTextOf(sent(row, column)); };
    return source;
}

// For each of the columns from first to last, the rows whose cells may be its widest: all rows of a short
// list, of a long one those that sent the longest different texts. A long list that does not say what was
// sent gives its first rows. Costs one walk over the rows.
std::vector<std::vector<int>> rowsToMeasure(const ReportSource& source, int first, int last);

// The rows of a source that are shown, ascending; nothing where all are.
using ShownRows = std::optional<std::vector<int>>;

// The table model of every list: a window onto a ReportSource, with no object per cell. Its rows are those
// of the source that are shown; whatever it takes, gives or announces as a source row is one of the source.
class ReportModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    const ReportSource& source() const { return source_; }

    // Shows source, or those rows of it, in place of what there was; one model reset.
    void setSource(ReportSource source, ShownRows shown = {});
    // Shows those rows of the source, of which there are as many as rows now; one model reset.
    void showRows(int rows, ShownRows shown);

    // Says that the source has this many rows now, the new ones behind the others, and shows them. rows: no
    // fewer than before. Only while all rows are shown.
    void growTo(int rows);

    // Says that the cells of these of its rows read differently now.
    void refresh(int firstRow, int lastRow);

    const ShownRows& shown() const { return shown_; }
    // The source row in one of the model's; -1 for none. And back: -1 for a row that is hidden or not there.
    int sourceRow(const QModelIndex& index) const { return index.isValid() ? sourceRowOf(index.row()) : -1; }
    int sourceRowOf(int row) const;
    int rowOfSource(int sourceRow) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Never changes anything: announces an edit of the first column with labelEdited, and the list keeps
    // the old label; announces a click on a box with checkToggled. An edit that leaves the text as it was is
    // not announced.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  signals: // of source rows
    void labelEdited(int row, const QString& text);
    void checkToggled(int row);

  private:
    ReportSource source_;
    ShownRows shown_;
};

} // namespace corvel

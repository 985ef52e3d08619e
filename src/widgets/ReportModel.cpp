#include "widgets/ReportModel.h"

#include <QBrush>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <utility>

namespace corvel {

namespace {

// So many rows are all measured.
constexpr int shortList = 100;

// The longest different texts of a column, among the first ones of each length: the others are not even
// looked at, which would cost more than all the rest in a list that does not lie in memory in its order.
class LongestTexts {
  public:
    void consider(std::string_view text, int row) {
        constexpr std::size_t most = 32;
        const bool isTooShort = kept_.size() == most && text.size() <= kept_.back().text.size();
        const bool isOfManySeen = text.size() < seen_.size() && seen_[text.size()]++ >= 2 * most;
        if (isTooShort || isOfManySeen) {
            return;
        }
        if (std::ranges::find(kept_, text, &Cell::text) == kept_.end()) {
            const auto isLonger = [](std::size_t size, const Cell& cell) { return size > cell.text.size(); };
            kept_.insert(std::upper_bound(kept_.begin(), kept_.end(), text.size(), isLonger), {text, row});
            kept_.resize(std::min(kept_.size(), most));
        }
    }

    std::vector<int> rows() const {
        std::vector<int> rows;
        std::ranges::transform(kept_, std::back_inserter(rows), &Cell::row);
        return rows;
    }

  private:
    struct Cell {
        std::string_view text;
        int row;
    };

    std::array<std::size_t, 64> seen_ = {}; // by length
    std::vector<Cell> kept_;                // the longest first
};

} // namespace

std::vector<std::vector<int>> rowsToMeasure(const ReportSource& source, int first, int last) {
    const std::size_t columns = static_cast<std::size_t>(last) - static_cast<std::size_t>(first) + 1;
    if (source.rows <= shortList || !source.sentText) {
        std::vector<int> rows(static_cast<std::size_t>(std::min(source.rows, shortList)));
        std::iota(rows.begin(), rows.end(), 0);
        return {columns, rows};
    }
    std::vector<LongestTexts> longest(columns);
    for (int row = 0; row < source.rows; ++row) {
        for (std::size_t i = 0; i < columns; ++i) {
            longest[i].consider(source.sentText(row, first + static_cast<int>(i)), row);
        }
    }
    std::vector<std::vector<int>> rows;
    std::ranges::transform(longest, std::back_inserter(rows), &LongestTexts::rows);
    return rows;
}

void ReportModel::setSource(ReportSource source, ShownRows shown) {
    beginResetModel();
    source_ = std::move(source);
    shown_ = std::move(shown);
    endResetModel();
}

void ReportModel::showRows(int rows, ShownRows shown) {
    beginResetModel();
    source_.rows = rows;
    shown_ = std::move(shown);
    endResetModel();
}

void ReportModel::growTo(int rows) {
    if (rows > source_.rows) {
        beginInsertRows({}, source_.rows, rows - 1);
        source_.rows = rows;
        endInsertRows();
    }
}

void ReportModel::refresh(int firstRow, int lastRow) {
    if (firstRow >= 0 && firstRow <= lastRow && lastRow < rowCount()) {
        emit dataChanged(index(firstRow, 0), index(lastRow, columnCount() - 1));
    }
}

int ReportModel::sourceRowOf(int row) const {
    return !shown_ ? row : (*shown_)[static_cast<std::size_t>(row)];
}

int ReportModel::rowOfSource(int sourceRow) const {
    if (!shown_) {
        return sourceRow >= 0 && sourceRow < source_.rows ? sourceRow : -1;
    }
    const auto found = std::ranges::lower_bound(*shown_, sourceRow);
    return found == shown_->end() || *found != sourceRow ? -1 : static_cast<int>(found - shown_->begin());
}

int ReportModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : !shown_ ? source_.rows : static_cast<int>(shown_->size());
}

int ReportModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(source_.columns.size());
}

QVariant ReportModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const int row = sourceRow(index);
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return source_.text(row, column);
    case Qt::EditRole:
        return column == 0 && source_.editText ? source_.editText(row) : source_.text(row, column);
    case Qt::DecorationRole:
        return column == 0 && source_.icon ? QVariant(source_.icon(row)) : QVariant();
    case Qt::ToolTipRole:
        return column == 0 && source_.iconText ? QVariant(toolTipOf(source_.iconText(row))) : QVariant();
    case Qt::AccessibleDescriptionRole:
        return column == 0 && source_.iconText ? QVariant(source_.iconText(row)) : QVariant();
    case Qt::CheckStateRole:
        return column == 0 && source_.checked ? QVariant(source_.checked(row) ? Qt::Checked : Qt::Unchecked)
                                              : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant(source_.columns[static_cast<std::size_t>(column)].alignment | Qt::AlignVCenter);
    case Qt::ForegroundRole:
    case Qt::BackgroundRole: {
        if (!source_.colours) {
            return {};
        }
        const RowColours colours = source_.colours(row);
        const QColor& colour = role == Qt::ForegroundRole ? colours.text : colours.background;
        return colour.isValid() ? QVariant(QBrush(colour)) : QVariant();
    }
    default:
        return {};
    }
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    const ReportColumn& column = source_.columns[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) {
        return column.header;
    }
    return role == Qt::TextAlignmentRole ? QVariant(column.alignment | Qt::AlignVCenter) : QVariant();
}

Qt::ItemFlags ReportModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    flags.setFlag(Qt::ItemIsEditable, index.column() == 0 && source_.editText);
    flags.setFlag(Qt::ItemIsUserCheckable, index.column() == 0 && source_.checked);
    return flags;
}

bool ReportModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role == Qt::EditRole && (flags(index) & Qt::ItemIsEditable)) {
        const QString text = value.toString();
        if (text != source_.editText(sourceRow(index))) {
            emit labelEdited(sourceRow(index), text);
        }
    } else if (role == Qt::CheckStateRole && (flags(index) & Qt::ItemIsUserCheckable)) {
        emit checkToggled(sourceRow(index));
    }
    return false;
}

} // namespace corvel

#include "widgets/SelectableList.h"

#include "widgets/TextConversion.h"

#include <QComboBox>
#include <QItemSelection>
#include <QStyledItemDelegate>

#include <utility>

namespace corvel {

namespace {

// Rows are as wide as the box and no wider: their texts give way in the middle.
class NameDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }
};

void setUpForNames(QListView& list) {
    list.setUniformItemSizes(true);
    list.setTextElideMode(Qt::ElideMiddle);
}

} // namespace

int NamesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant NamesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const std::string& name = entries_[static_cast<std::size_t>(index.row())].sText;
    switch (role) {
    case Qt::DisplayRole:
        return nameTextOf(name);
    case Qt::ToolTipRole:
        return nameTextOf(name) == displayTextOf(name) ? QVariant() : toolTipOf(displayTextOf(name));
    case Qt::UserRole:
        return textOf(name);
    default:
        return {};
    }
}

// What is selected is told in ranges: one by one it would cost the square of their number.
SelectableList::SelectableList(std::vector<SelectableEntry> entries)
    : names_(new NamesModel(std::move(entries), this)) {
    setModel(names_);
    setItemDelegate(new NameDelegate(this));
    setSelectionMode(QAbstractItemView::MultiSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUpForNames(*this);
    QItemSelection selection;
    const std::vector<SelectableEntry>& all = names_->entries();
    for (std::size_t first = 0; first < all.size(); ++first) {
        std::size_t end = first;
        while (end < all.size() && all[end].bSelected) {
            ++end;
        }
        if (end > first) {
            selection.append(QItemSelectionRange(names_->index(static_cast<int>(first)),
                                                 names_->index(static_cast<int>(end) - 1)));
            first = end;
        }
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

std::vector<SelectableEntry> SelectableList::entries() const {
    std::vector<SelectableEntry> current = names_->entries();
    for (SelectableEntry& entry : current) {
        entry.bSelected = false;
    }
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            current[static_cast<std::size_t>(row)].bSelected = row != hidden_;
        }
    }
    return current;
}

void SelectableList::hideEntry(int row) {
    for (const int changed : {std::exchange(hidden_, row), row}) {
        if (changed >= 0) {
            setRowHidden(changed, changed == hidden_);
            // Also of the one that comes back: Ctrl+A reaches what is hidden.
            selectionModel()->select(names_->index(changed), QItemSelectionModel::Deselect);
        }
    }
}

void SelectableList::shareNames(QComboBox& box) const {
    box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box.setMinimumContentsLength(16);
    box.setModel(names_);
    box.setCurrentIndex(-1);
    QObject::connect(&box, &QComboBox::currentIndexChanged, &box,
                     [&box] { box.setToolTip(box.currentData(Qt::ToolTipRole).toString()); });
    if (auto* const view = qobject_cast<QListView*>(box.view())) {
        setUpForNames(*view);
    }
    constexpr int many = 1000;
    if (names_->rowCount() > many) {
        // A list that drops down: a menu-like one asks every row for its place before it opens.
        box.setStyleSheet(QStringLiteral("QComboBox { combobox-popup: 0 }"));
    }
}

} // namespace corvel

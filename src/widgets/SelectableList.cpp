#include "widgets/SelectableList.h"

#include "widgets/TextConversion.h"

#include <utility>

namespace corvel {

SelectableList::SelectableList(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::MultiSelection);
    setUniformItemSizes(true);
}

void SelectableList::setEntries(std::vector<SelectableEntry> entries, TextEncoding encoding) {
    entries_ = std::move(entries);
    clear();
    for (const SelectableEntry& entry : entries_) {
        auto* const entryItem = new QListWidgetItem(displayTextOf(entry.sText, encoding), this);
        entryItem->setSelected(entry.bSelected);
    }
}

std::vector<SelectableEntry> SelectableList::entries() const {
    std::vector<SelectableEntry> current = entries_;
    for (std::size_t i = 0; i < current.size(); ++i) {
        const QListWidgetItem& entryItem = *item(static_cast<int>(i));
        current[i].bSelected = entryItem.isSelected() && !entryItem.isHidden();
    }
    return current;
}

} // namespace corvel

#include "widgets/FormBoxes.h"

#include "widgets/TextConversion.h"

#include <utility>

namespace corvel {

void BytesEdit::setBytes(std::string_view bytes, TextEncoding encoding, const std::optional<QString>& typed) {
    if (bytes == bytes_ && typed == text()) {
        return; // nothing new, and the person can still undo
    }
    const QString before = text();
    const int cursor = cursorPosition();
    bytes_ = bytes;
    encoding_ = isValidUtf8(bytes) ? encoding : TextEncoding::windows1252;
    setText(textOf(bytes, encoding_));
    shown_ = text();
    if (typed) {
        setText(*typed);
    }
    setCursorPosition(text() == before ? cursor : 0);
}

std::string BytesEdit::bytes() const {
    return isTouched() ? bytesOf(text(), encoding_) : bytes_;
}

BytesEdit* FormBoxes::add(std::string& member) {
    fields_.push_back({&member, new BytesEdit});
    return fields_.back().box;
}

void FormBoxes::show(TextEncoding encoding) {
    for (const Field& field : fields_) {
        field.box->setBytes(*field.member, encoding);
    }
}

void FormBoxes::setEncoding(TextEncoding encoding) const {
    for (const Field& field : fields_) {
        field.box->setEncoding(encoding);
    }
}

void FormBoxes::collect() const {
    for (const Field& field : fields_) {
        *field.member = field.box->bytes();
    }
}

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

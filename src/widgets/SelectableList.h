#pragma once

#include "common/Text.h"

#include <QAbstractListModel>
#include <QListView>

#include <cstddef>
#include <vector>

class QComboBox;

namespace corvel {

// Names of a server, however many and however long, for a list box or a combo box: the text of a row is made
// as it is painted, as nameTextOf has it. Qt::UserRole gives the name whole, and so does the tip of one that
// is shortened.
class NamesModel : public QAbstractListModel {
  public:
    NamesModel(std::vector<SelectableEntry> entries, QObject* parent)
        : QAbstractListModel(parent), entries_(std::move(entries)) {}

    const std::vector<SelectableEntry>& entries() const { return entries_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    std::vector<SelectableEntry> entries_; // entry i is row i
};

// A list box in which a click, or the space bar, selects an entry or takes its selection back, whatever else
// is selected.
class SelectableList : public QListView {
  public:
    explicit SelectableList(std::vector<SelectableEntry> entries);

    // The entries with the selection as it is now; a hidden entry is not selected.
    std::vector<SelectableEntry> entries() const;

    // Hides that entry, which is selected no more, and shows the one that was hidden before; -1 for none.
    void hideEntry(int row);

    // Lists the same names in box, of which none is chosen; its tip has one that is shortened. The list must
    // not end before the box.
    void shareNames(QComboBox& box) const;

  private:
    NamesModel* names_; // owned as a child
    int hidden_ = -1;
};

} // namespace corvel

#pragma once

#include "common/SelectableEntry.h"
#include "common/TextEncoding.h"

#include <QListWidget>

#include <vector>

namespace corvel {

// A list box in which a click, or the space bar, selects an entry or takes its selection back, whatever else
// is selected.
class SelectableList : public QListWidget {
    Q_OBJECT

  public:
    explicit SelectableList(QWidget* parent = nullptr);

    // Shows entries, whose texts are in the encoding.
    void setEntries(std::vector<SelectableEntry> entries, TextEncoding encoding);

    // The entries with the selection as it is now; a hidden entry is not selected.
    std::vector<SelectableEntry> entries() const;

  private:
    std::vector<SelectableEntry> entries_; // entry i is row i
};

} // namespace corvel

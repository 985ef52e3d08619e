#pragma once

#include "common/SelectableEntry.h"
#include "common/TextEncoding.h"
#include "widgets/OneLineEdit.h"

#include <QListWidget>

#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// A line edit over a text of the server: what a person leaves alone comes back as the same bytes, even where
// they cannot be told from what is on screen.
class BytesEdit : public OneLineEdit {
    Q_OBJECT

  public:
    using OneLineEdit::OneLineEdit;

    // Shows bytes, and reads what is typed from now on in the encoding, that of the connection.
    // typed: what a person has made of them, which is shown instead; bytes come back only when it is taken
    // back. A text that stays the same keeps its cursor.
    void setBytes(std::string_view bytes, TextEncoding encoding, const std::optional<QString>& typed = {});
    // Keeps the text, for a box that outlives the connection; typed text alone is read in another encoding.
    void setEncoding(TextEncoding encoding) { encoding_ = encoding; }

    std::string bytes() const;
    // Whether the text is another one than what was shown.
    bool isTouched() const { return text() != shown_; }

  private:
    std::string bytes_;
    QString shown_; // what the box made of bytes_
    TextEncoding encoding_ = TextEncoding::utf8;
};

// The text boxes over the members of one form record. The record must outlive it and stay where it is.
class FormBoxes {
  public:
    // A new box for member, without a parent: the caller's layout takes it over.
    BytesEdit* add(std::string& member);

    // Loads every box from its member, whose bytes are in the encoding of the connection.
    void show(TextEncoding encoding);

    // Reads what is typed in another encoding from now on, as BytesEdit does; the texts stay.
    void setEncoding(TextEncoding encoding) const;

    // Stores what the boxes hold in the members.
    void collect() const;

  private:
    struct Field {
        std::string* member;
        BytesEdit* box;
    };

    std::vector<Field> fields_;
};

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

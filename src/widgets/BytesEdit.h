#pragma once

#include "common/TextEncoding.h"
#include "widgets/OneLineEdit.h"

#include <optional>
#include <string>
#include <string_view>

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

} // namespace corvel

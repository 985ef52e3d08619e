#include "widgets/BytesEdit.h"

#include "widgets/TextConversion.h"

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

} // namespace corvel

#include "widgets/BytesEdit.h"

#include "widgets/TextConversion.h"

namespace corvel {

void BytesEdit::setBytes(std::string_view bytes, TextEncoding encoding) {
    bytes_ = bytes;
    encoding_ = isValidUtf8(bytes) ? encoding : TextEncoding::windows1252;
    setText(textOf(bytes, encoding_));
    setCursorPosition(0);
    shown_ = text();
}

std::string BytesEdit::bytes() const {
    return text() == shown_ ? bytes_ : bytesOf(text(), encoding_);
}

} // namespace corvel

#include "net/LogText.h"

#include "common/TextEncoding.h"

namespace corvel {

void LogText::append(std::string_view text) {
    text_ += text;
    characters_ += characterCount(text);
    if (characters_ <= limit_) {
        return;
    }
    std::size_t excess = characters_ - limit_;
    std::size_t start = 0;
    while (start < text_.size()) {
        const bool startsCharacter = (static_cast<unsigned char>(text_[start]) & 0xC0U) != 0x80;
        if (startsCharacter && excess == 0) {
            break;
        }
        excess -= startsCharacter ? 1 : 0;
        ++start;
    }
    text_.erase(0, start);
    characters_ = limit_;
}

} // namespace corvel

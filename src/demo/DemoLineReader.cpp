#include "demo/DemoLineReader.h"

namespace corvel {

void DemoLineReader::add(std::string_view bytes) {
    if (isDropping_) {
        const std::size_t end = bytes.find('\n');
        if (end == std::string_view::npos) {
            return;
        }
        isDropping_ = false;
        bytes.remove_prefix(end + 1);
    }
    bytes_.append(bytes);
}

std::optional<DemoLineReader::Line> DemoLineReader::next() {
    const std::size_t end = bytes_.find('\n');
    const bool isLong = (end == std::string::npos ? bytes_.size() : end) > longestLine;
    if (end == std::string::npos && !isLong) {
        return std::nullopt;
    }
    Line line{.text = {}, .isLong = isLong};
    if (!isLong) {
        line.text.assign(bytes_, 0, end);
        if (line.text.ends_with('\r')) {
            line.text.pop_back();
        }
    }
    isDropping_ = end == std::string::npos;
    bytes_.erase(0, isDropping_ ? end : end + 1);
    return line;
}

} // namespace corvel

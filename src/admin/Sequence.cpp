#include "admin/Sequence.h"

#include "common/Text.h"

#include <algorithm>
#include <utility>

namespace corvel {

std::string batchText(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text.append(line).append(lineEnd);
    }
    return text;
}

BatchLines::BatchLines(std::string lines) : lines_(std::move(lines)) {
    for (const std::string_view line : split(lines_, lineEnd)) {
        total_ += line.empty() ? 0 : 1;
    }
    left_ = total_;
}

std::optional<std::string> BatchLines::takeNext() {
    while (position_ < lines_.size()) {
        const std::size_t end = std::min(lines_.find(lineEnd, position_), lines_.size());
        std::string line = lines_.substr(position_, end - position_);
        position_ = std::min(end + lineEnd.size(), lines_.size());
        if (!line.empty()) {
            --left_;
            return line;
        }
    }
    *this = {};
    return std::nullopt;
}

} // namespace corvel

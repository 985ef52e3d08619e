#include "admin/ReplyLines.h"

#include "common/Numbers.h"

namespace corvel {

std::vector<std::string_view> listPieces(std::string_view value) {
    return value.empty() ? std::vector<std::string_view>() : split(value, fieldSeparator);
}

void readIds(std::vector<std::int16_t>& ids, std::string_view value) {
    std::size_t place = ids.size() - 1;
    for (const std::string_view piece : listPieces(value)) {
        const std::int16_t number = toInt16(piece);
        if (place == ids.size()) {
            ids.push_back(number);
        } else {
            ids[place] = number;
        }
        ++place;
    }
}

ReplyLine cutReplyLine(std::string_view line) {
    constexpr std::size_t prefixSize = 4;
    const std::size_t end = line.find(fieldSeparator);
    const std::string_view first = line.substr(0, end);
    if (first.size() < prefixSize) {
        throw InvalidArgument(line, "is too short for a reply line");
    }
    const bool hasValue = end != std::string_view::npos;
    return {first.substr(prefixSize), hasValue,
            hasValue ? line.substr(end + fieldSeparator.size()) : std::string_view()};
}

} // namespace corvel

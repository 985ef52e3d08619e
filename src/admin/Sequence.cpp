#include "admin/Sequence.h"

#include "common/Text.h"

namespace corvel {

std::string batchText(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text.append(line).append(lineEnd);
    }
    return text;
}

} // namespace corvel

#include "config/EntryLine.h"

#include "common/Text.h"

namespace corvel {

std::optional<EntryLine> parseEntryLine(std::string_view line, Comments comments) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (line.starts_with(byteOrderMark)) {
        line.remove_prefix(byteOrderMark.size());
    }
    if (comments == Comments::semicolonAndHash) {
        line = trimLeading(line);
        if (line.starts_with(';') || line.starts_with('#')) {
            return std::nullopt;
        }
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return std::nullopt;
    }
    return EntryLine{.key = toLower(trim(line.substr(0, equals))),
                     .value = std::string(trim(line.substr(equals + 1)))};
}

} // namespace corvel

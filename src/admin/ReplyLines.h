#pragma once

#include "common/Errors.h"
#include "common/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace corvel {

// What one key of a userfile or groupfile reply does to the record.
template <typename Record>
struct ReplyKey {
    std::string_view key;
    void (*read)(Record& record, std::string_view value);
};

// The pieces of a list value. An empty value has none.
std::vector<std::string_view> listPieces(std::string_view value);

// Reads the ids of a list value into ids, which holds at least one element: the first id takes the place of
// the last element (the -1 of an empty list), the others follow it.
// Throws ConversionError for an id outside 16 bits; the ids before it stay.
void readIds(std::vector<std::int16_t>& ids, std::string_view value);

// The key of a reply line and the text behind its first " | ", if there is one.
struct ReplyLine {
    std::string_view key;
    bool hasValue;
    std::string_view value;
};

// Cuts "200-key | value". Throws InvalidArgument when fewer than four characters stand before the " | ".
ReplyLine cutReplyLine(std::string_view line);

// Reads every line that has one of keys into record; lines with other keys are passed over. Throws what a
// key's reader throws, and IndexOutOfRange for a known key without a value, with the line's number set. What
// the lines before it said stays in record.
template <typename Record>
void readReplyLines(Record& record, std::span<const std::string_view> lines,
                    std::span<const ReplyKey<Record>> keys) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].empty()) {
            continue;
        }
        try {
            const ReplyLine line = cutReplyLine(lines[i]);
            const auto known = std::ranges::find(keys, line.key, &ReplyKey<Record>::key);
            if (known == keys.end()) {
                continue;
            }
            if (!line.hasValue) {
                throw IndexOutOfRange(lines[i], "value");
            }
            known->read(record, line.value);
        } catch (ParseError& error) {
            error.setLineNumber(i + 1);
            throw;
        }
    }
}

} // namespace corvel

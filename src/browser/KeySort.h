#pragma once

#include <cstdint>
#include <span>

namespace corvel {

// A row with the number that it is ordered by.
struct KeyedRow {
    std::uint64_t key = 0;
    std::uint32_t row = 0;
};

// Orders rows by key, ascending; rows of one key keep their order. Costs a few passes over the rows, one
// for each byte in which the keys differ.
void sortByKey(std::span<KeyedRow> rows);

} // namespace corvel

#include "browser/KeySort.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace corvel {

namespace {

constexpr std::size_t byteValues = 256;
constexpr std::size_t keyBytes = sizeof(std::uint64_t);
// Below this, the fixed cost of counting byte values is more than that of comparing.
constexpr std::size_t fewRows = 200;

using ByteCounts = std::array<std::uint32_t, byteValues>;

std::size_t byteAt(std::uint64_t key, std::size_t place) {
    return key >> (8 * place) & 0xFFU;
}

// Stable distribution by one byte of the key. counts: how often each value of that byte occurs.
void distribute(std::span<const KeyedRow> from, std::span<KeyedRow> to, std::size_t place,
                const ByteCounts& counts) {
    ByteCounts next{};
    for (std::size_t value = 1; value < byteValues; ++value) {
        next[value] = next[value - 1] + counts[value - 1];
    }
    for (const KeyedRow& keyed : from) {
        to[next[byteAt(keyed.key, place)]++] = keyed;
    }
}

} // namespace

void sortByKey(std::span<KeyedRow> rows) {
    if (rows.size() < fewRows) {
        std::ranges::stable_sort(rows, {}, &KeyedRow::key);
        return;
    }
    std::array<ByteCounts, keyBytes> counts{};
    for (const KeyedRow& keyed : rows) {
        for (std::size_t place = 0; place < keyBytes; ++place) {
            ++counts[place][byteAt(keyed.key, place)];
        }
    }
    std::vector<KeyedRow> spare(rows.size());
    std::span<KeyedRow> from = rows;
    std::span<KeyedRow> to = spare;
    for (std::size_t place = 0; place < keyBytes; ++place) {
        if (counts[place][byteAt(rows.front().key, place)] == rows.size()) {
            continue; // all keys have the same byte here
        }
        distribute(from, to, place, counts[place]);
        std::swap(from, to);
    }
    if (from.data() != rows.data()) {
        std::ranges::copy(from, rows.begin());
    }
}

} // namespace corvel

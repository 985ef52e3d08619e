#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace corvel {

// A set of 16-bit ids. Asking costs the same however many there are.
class IdSet {
  public:
    explicit IdSet(std::span<const std::int16_t> ids) {
        for (const std::int16_t id : ids) {
            bits_.set(static_cast<std::uint16_t>(id));
        }
    }

    bool contains(std::int16_t id) const { return bits_.test(static_cast<std::uint16_t>(id)); }

  private:
    std::bitset<65536> bits_;
};

// Finds the first record of a table by its id, for whoever looks up many ids: one pass over the table, then
// the same short time for each. The table must outlive it and stay as it is.
template <typename Record>
class IdLookup {
  public:
    IdLookup(const std::vector<Record>& table, std::int16_t Record::*id) : first_(65536) {
        for (const Record& record : table) {
            const Record*& first = first_[static_cast<std::uint16_t>(record.*id)];
            first = first == nullptr ? &record : first;
        }
    }

    // The first record with the id, or null.
    const Record* find(std::int16_t id) const { return first_[static_cast<std::uint16_t>(id)]; }

  private:
    std::vector<const Record*> first_;
};

} // namespace corvel

#pragma once

#include <cstddef>
#include <vector>

namespace corvel {

// How many records a list takes from one reply. A server decides how many it sends: of the longest reply that
// there is so many stay below 2.5 times its size in memory, and they are ordered and shown in good time.
inline constexpr std::size_t mostRecords = 220000;

// Makes room in the records of a reply that grow one by one: for all that there can be once they are many, of
// which the system gives what is written to. Growing by and by leaves holes that no other record fits into.
template <typename Record>
void growInTwoSteps(std::vector<Record>& records) {
    constexpr std::size_t few = 4096;
    if (records.size() == few && records.capacity() < mostRecords) {
        records.reserve(mostRecords);
    }
}

} // namespace corvel

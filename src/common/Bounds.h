#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace corvel {

// How many records a list takes from one reply, and how many bytes of memory they may cost. A server decides
// how many it sends and how long they are: of the longest reply that there is so many stay below 2.5 times
// its size in memory, and they are ordered and shown in good time.
inline constexpr std::size_t mostRecords = 220000;
inline constexpr std::size_t mostRecordBytes = std::size_t{74} * 1024 * 1024;

// What a list has taken from one reply.
class RecordRoom {
  public:
    bool isFull() const { return records_ == mostRecords || bytes_ >= mostRecordBytes; }
    // bytes: what one record costs with its texts.
    void take(std::size_t bytes) {
        constexpr std::size_t rowBytes = 64; // its row on the screen, and its place in the order
        ++records_;
        bytes_ += bytes + rowBytes;
    }

  private:
    std::size_t records_ = 0;
    std::size_t bytes_ = 0;
};

// What a std::string with that text costs beside itself.
inline std::size_t heapBytes(std::string_view text) {
    constexpr std::size_t held = 15; // within itself
    constexpr std::size_t allocation = 24;
    return text.size() <= held ? 0 : text.size() + allocation;
}

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

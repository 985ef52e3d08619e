#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace corvel {

// Where the blanks of a line are, found once for its first 64 bytes, in which the fields of a listing line
// lie: looking for each of the dozen blanks of such a line by itself costs more than all the rest. Points
// into the line.
class Blanks {
  public:
    explicit Blanks(std::string_view line) : line_(line) {
        const std::size_t length = std::min(line.size(), mapped);
        for (std::size_t i = 0; i < length; i += blockSize) {
            std::uint64_t block = 0;
            if (i + blockSize <= line.size()) {
                std::memcpy(&block, line.data() + i, blockSize);
            } else {
                std::memcpy(&block, line.data() + i, line.size() - i);
            }
            map_ |= blanksOf(block) << i;
        }
    }

    // The place of the first blank at or after position; the line's size when there is none.
    std::size_t find(std::size_t position) const {
        if (position < mapped) {
            const std::uint64_t rest = map_ >> position;
            if (rest != 0) {
                return position + static_cast<std::size_t>(std::countr_zero(rest));
            }
            position = mapped;
        }
        return std::min(line_.find(' ', position), line_.size());
    }

    // The first place at or after position that is no blank; the line's size when there is none.
    std::size_t skip(std::size_t position) const {
        if (position < mapped) {
            const std::uint64_t rest = ~map_ >> position;
            if (rest != 0) {
                return std::min(position + static_cast<std::size_t>(std::countr_zero(rest)), line_.size());
            }
            position = mapped;
        }
        return std::min(line_.find_first_not_of(' ', position), line_.size());
    }

    std::string_view line() const { return line_; }

  private:
    static constexpr std::size_t mapped = 64;
    static constexpr std::size_t blockSize = sizeof(std::uint64_t);

    // Eight bytes as bits, lowest first: one for each that is a blank.
    static std::uint64_t blanksOf(std::uint64_t block) {
        static_assert(std::endian::native == std::endian::little);
        constexpr std::uint64_t low = 0x7F7F7F7F7F7F7F7F;
        const std::uint64_t other = block ^ 0x2020202020202020; // a blank is a zero byte here
        const std::uint64_t highBits = ~(((other & low) + low) | other | low);
        return (highBits >> 7U) * 0x0102040810204080 >> 56U;
    }

    std::string_view line_;
    std::uint64_t map_ = 0;
};

} // namespace corvel

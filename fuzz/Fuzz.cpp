#include "Fuzz.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

namespace corvel::fuzz {

namespace {

std::string repeated(std::string_view bytes, std::size_t count) {
    std::string text;
    text.reserve(bytes.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += bytes;
    }
    return text;
}

std::uint64_t costOf(const std::string& bytes) {
    const std::uint64_t before = workDone();
    work(bytes);
    return workDone() - before;
}

// Storage grows by doubling and what is sorted costs a little more than linear: hence the factor of two. The
// allowance for each byte is for inputs that begin to be worth reading only when there is more of them.
void requireLinear(std::string_view bytes) {
    constexpr std::size_t few = 4;
    constexpr std::size_t many = 32;
    constexpr std::uint64_t allowance = 256;
    const std::uint64_t cheap = costOf(repeated(bytes, few));
    const std::uint64_t dear = costOf(repeated(bytes, many));
    const std::uint64_t most = 2 * many / few * cheap + allowance * (many * bytes.size() + 64);
    if (dear > most) {
        std::fprintf(stderr, "%zu copies cost %llu, %zu cost %llu\n", few,
                     static_cast<unsigned long long>(cheap), many, static_cast<unsigned long long>(dear));
    }
    require(dear <= most, "work grows linearly with the input");
}

// Counting costs as much as forty runs: while inputs are looked for it is done for some, chosen by nothing
// but their bytes; where inputs are replayed, for all.
bool isToBeCounted(std::string_view bytes) {
    static const bool all = std::getenv("CORVEL_FUZZ_COUNT_ALL") != nullptr;
    return all || std::hash<std::string_view>()(bytes) % 128 == 0;
}

} // namespace

void require(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", rule);
        std::abort();
    }
}

} // namespace corvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    corvel::fuzz::check(bytes);
    if (corvel::fuzz::isToBeCounted(bytes)) {
        corvel::fuzz::requireLinear(bytes);
    }
    return 0;
}

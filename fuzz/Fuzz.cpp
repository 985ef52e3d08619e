#include "Fuzz.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

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

// Half as much again is for what is sorted and for storage that grows by doubling. The allowance for each
// byte is for inputs that begin to be worth reading only when there is more of them.
void requireLinear(std::string_view bytes) {
    constexpr std::size_t few = 4;
    constexpr std::size_t many = 32;
    constexpr std::uint64_t allowance = 64;
    const std::uint64_t cheap = costOf(repeated(bytes, few));
    const std::uint64_t dear = costOf(repeated(bytes, many));
    const std::uint64_t most = 3 * many / (2 * few) * cheap + allowance * (many * bytes.size() + 64);
    if (dear > most) {
        std::fprintf(stderr, "%zu copies cost %llu, %zu cost %llu\n", few,
                     static_cast<unsigned long long>(cheap), many, static_cast<unsigned long long>(dear));
    }
    require(dear <= most, "work grows linearly with the input");
}

} // namespace

bool isSample(std::string_view bytes) {
    static const bool all = std::getenv("CORVEL_FUZZ_ALL") != nullptr;
    return all || std::hash<std::string_view>()(bytes) % 128 == 0;
}

void require(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", rule);
        std::abort();
    }
}

std::string fileOf(std::string_view bytes) {
    static const int file = memfd_create("input", 0);
    const auto size = static_cast<ssize_t>(bytes.size());
    require(ftruncate(file, 0) == 0 && pwrite(file, bytes.data(), bytes.size(), 0) == size,
            "there is memory");
    return "/proc/self/fd/" + std::to_string(file);
}

} // namespace corvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    corvel::fuzz::check(bytes);
    if (corvel::fuzz::isSample(bytes)) { // counting costs as much as forty runs
        corvel::fuzz::requireLinear(bytes);
    }
    return 0;
}

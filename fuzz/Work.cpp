// Counts what the program does. This file is not instrumented itself. The linker puts the functions named
// __wrap_NAME in the place of NAME, and __real_NAME is what was there.
#include "Fuzz.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <sanitizer/allocator_interface.h>

namespace {

constexpr std::size_t bytesPerStep = 64;
std::uint64_t steps = 0;

void countBytes(std::size_t size) {
    steps += size / bytesPerStep + 1;
}

void countAllocation(const volatile void* /*place*/, std::size_t size) {
    countBytes(size);
}
void ignoreRelease(const volatile void* /*place*/) {}

[[maybe_unused]] const int isInstalled =
    __sanitizer_install_malloc_and_free_hooks(countAllocation, ignoreRelease);

} // namespace

namespace corvel::fuzz {

std::uint64_t workDone() {
    return steps;
}

} // namespace corvel::fuzz

extern "C" {

// Memory that is given back is kept out of use for a while, to be seen where it is used all the same; but not
// so much of it that each run takes fresh pages.
const char* __asan_default_options() {
    return "malloc_context_size=1:quarantine_size_mb=2:max_malloc_fill_size=0";
}

void __wrap___sanitizer_cov_trace_pc_guard(std::uint32_t* /*edge*/) {
    ++steps;
}
void __wrap___sanitizer_cov_trace_pc_guard_init(std::uint32_t* /*first*/, std::uint32_t* /*last*/) {}

void* __real_memcpy(void* to, const void* from, std::size_t size);
void* __real_memmove(void* to, const void* from, std::size_t size);
void* __real_memchr(const void* bytes, int wanted, std::size_t size);
void* __real___asan_memcpy(void* to, const void* from, std::size_t size);
void* __real___asan_memmove(void* to, const void* from, std::size_t size);

void* __wrap_memcpy(void* to, const void* from, std::size_t size) {
    countBytes(size);
    return __real_memcpy(to, from, size);
}
void* __wrap_memmove(void* to, const void* from, std::size_t size) {
    countBytes(size);
    return __real_memmove(to, from, size);
}
void* __wrap___asan_memcpy(void* to, const void* from, std::size_t size) {
    countBytes(size);
    return __real___asan_memcpy(to, from, size);
}
void* __wrap___asan_memmove(void* to, const void* from, std::size_t size) {
    countBytes(size);
    return __real___asan_memmove(to, from, size);
}
void* __wrap_memchr(const void* bytes, int wanted, std::size_t size) {
    void* const found = __real_memchr(bytes, wanted, size);
    countBytes(found == nullptr ? size
                                : static_cast<std::size_t>(static_cast<const char*>(found) -
                                                           static_cast<const char*>(bytes)));
    return found;
}
}

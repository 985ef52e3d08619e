#include "admin/mdlUsersGroups.h"
#include "common/Text.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

constexpr int userCount = 30000;

std::string userTableReply() {
    std::string reply = "200-usertable\r\n";
    for (int uid = 0; uid < userCount; ++uid) {
        const std::string number = std::to_string(uid);
        reply += "200- | " + number + " | user" + number + " | group" + std::to_string(uid % 40) + " | 3\r\n";
    }
    return reply + "200 Command successful.\r\n";
}

// The bound: one memchr pass over the reply that visits every line end.
std::size_t countLines(std::string_view text) {
    std::size_t lines = 0;
    while (const void* end = std::memchr(text.data(), '\n', text.size())) {
        text.remove_prefix(static_cast<std::size_t>(static_cast<const char*>(end) - text.data()) + 1);
        ++lines;
    }
    return lines;
}

// Runs work once and gives its seconds.
template <typename Work>
double secondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void parseUserTable(benchmark::State& state) {
    const std::string reply = userTableReply();
    const std::vector<std::string_view> lines = split(reply, lineEnd);
    double bound = 0;
    double work = 0;
    for (auto _ : state) {
        bound += secondsOf([&] { benchmark::DoNotOptimize(countLines(reply)); });
        work += secondsOf([&] { benchmark::DoNotOptimize(ParseUserTable(1, lines)); });
    }
    state.counters["times_memchr_scan"] = work / bound;
    state.counters["ms"] = 1000 * work / static_cast<double>(state.iterations());
}
BENCHMARK(parseUserTable)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel

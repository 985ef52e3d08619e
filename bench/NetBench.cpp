#include "app/mdlMain.h"
#include "net/CommandChannel.h"
#include "net/ReplyBuffer.h"
#include "support/TestPorts.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

constexpr std::size_t replySize = std::size_t{16} * 1024 * 1024;

std::string bigReply() {
    std::string text = "211-status of /:\r\n";
    while (text.size() < replySize - 128) {
        text += "-rw-r--r-- 1 root root 1234567 Jan 5 12:00 a file of an ordinary name.bin\r\n";
    }
    return text + "211 End of Status\r\n";
}

template <typename Take>
void cutInto(std::string_view text, std::size_t size, Take take) {
    for (std::size_t start = 0; start < text.size(); start += size) {
        take(text.substr(start, size));
    }
}

// The bound: appending the chunks and one memchr pass over them, line by line.
std::size_t appendAndScan(std::string_view reply, std::size_t chunkSize) {
    std::string text;
    cutInto(reply, chunkSize, [&](std::string_view chunk) { text += chunk; });
    std::size_t lines = 0;
    const char* position = text.data();
    const char* const end = position + text.size();
    while (const void* found = std::memchr(position, '\n', static_cast<std::size_t>(end - position))) {
        position = static_cast<const char*>(found) + 1;
        ++lines;
    }
    return lines;
}

std::size_t assemble(std::string_view reply, std::size_t chunkSize) {
    ReplyBuffer buffer;
    std::size_t complete = 0;
    cutInto(reply, chunkSize, [&](std::string_view chunk) {
        complete += buffer.append(chunk) == ReplyProgress::complete ? 1 : 0;
    });
    benchmark::DoNotOptimize(buffer.lastLine());
    return complete;
}

template <typename Work>
double seconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(work());
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double>& times) {
    std::ranges::nth_element(times, times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2));
    return times[times.size() / 2];
}

// Both are timed in turn within one iteration; the counter is the ratio of their medians. It should stay
// below 1.3.
void replyAssembly(benchmark::State& state) {
    const std::string reply = bigReply();
    const auto chunkSize = static_cast<std::size_t>(state.range(0));
    std::vector<double> bounds;
    std::vector<double> ours;
    for ([[maybe_unused]] auto iteration : state) {
        bounds.push_back(seconds([&] { return appendAndScan(reply, chunkSize); }));
        ours.push_back(seconds([&] { return assemble(reply, chunkSize); }));
    }
    state.counters["bound_ms"] = median(bounds) * 1e3;
    state.counters["assembly_ms"] = median(ours) * 1e3;
    state.counters["ratio"] = median(ours) / median(bounds);
}

BENCHMARK(replyAssembly)
    ->Arg(1)
    ->Arg(64)
    ->Arg(1460)
    ->Arg(65536)
    ->Arg(replySize)
    ->Unit(benchmark::kMillisecond);

// What a log of 100,000 lines costs that arrives in pieces, beside appending the pieces. The ratio should
// stay below 6.
void consoleLog(benchmark::State& state) {
    std::string reply;
    for (int i = 0; i < 100000; ++i) {
        reply += "-rw-r--r-- 1 root root 1234567 Jan 5 12:00 a file of an ordinary name.bin\r\n";
    }
    std::vector<double> bounds;
    std::vector<double> ours;
    for ([[maybe_unused]] auto iteration : state) {
        bounds.push_back(seconds([&] {
            std::string text;
            cutInto(reply, 65536, [&](std::string_view chunk) { text += chunk; });
            return text.size();
        }));
        ours.push_back(seconds([&] {
            LogText log(25000, LogText::Style::linesEnd);
            cutInto(reply, 65536, [&](std::string_view chunk) { log.append(chunk, "12:34:56"); });
            return log.text().size();
        }));
    }
    state.counters["bound_ms"] = median(bounds) * 1e3;
    state.counters["log_ms"] = median(ours) * 1e3;
    state.counters["ratio"] = median(ours) / median(bounds);
}

BENCHMARK(consoleLog)->Unit(benchmark::kMillisecond);

// The event that completes a reply of 31 MiB to a command of the console, in lines of the given size: all but
// what a parser adds. It should stay below 50 ms.
void lastEvent(benchmark::State& state) {
    const auto lineSize = static_cast<std::size_t>(state.range(0));
    std::string reply = "211-x\r\n";
    while (reply.size() < std::size_t{31} * 1024 * 1024) {
        reply.append(lineSize - 2, 'x').append("\r\n");
    }
    test::FixedClock clock;
    test::RecordingViews views;
    const Settings settings;
    std::vector<double> times;
    for ([[maybe_unused]] auto iteration : state) {
        Sites sites(2);
        auto socket = std::make_unique<test::FakeSocket>();
        socket->current = SocketState::connected;
        sites[1].wSock = std::move(socket);
        sites[1].session.bLoggedIn = true;
        ConsoleLog log(sites, clock, views);
        MemoryStore store;
        CommandChannel channel(sites, log, views, settings, store, replyHandlers());
        channel.SendCommand(1, {.sCommand = "stat", .bQuiet = false});
        cutInto(reply, 262144, [&](std::string_view chunk) { channel.ReplyRouter(1, chunk); });
        times.push_back(seconds([&] {
            channel.ReplyRouter(1, "211 end\r\n");
            return 0;
        }));
        if (sites[1].session.bAwaitingReply) {
            state.SkipWithError("the reply is not complete");
        }
    }
    state.counters["last_event_ms"] = median(times) * 1e3;
}

BENCHMARK(lastEvent)->Arg(34)->Arg(76)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel

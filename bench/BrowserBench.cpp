// The browser's work on a directory of 100,000 entries, each kind beside the bound that it is held to.

#include "browser/Listing.h"
#include "browser/Order.h"
#include "LineScan.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace corvel {
namespace {

constexpr std::size_t lineCount = 100000;

// A reply as servers word it: padded columns, names of many lengths, some with blanks or other letters.
std::string makeReply() {
    constexpr std::string_view words[] = {"report",
                                          "Backup",
                                          "image",
                                          "IMG_",
                                          "notes ",
                                          "archive-",
                                          "x",
                                          "Sommer ",
                                          "data.",
                                          "music",
                                          "\xC3\x89t\xC3\xA9 "};
    constexpr std::string_view months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun"};
    std::mt19937 random(1); // NOLINT: the same reply in every run
    std::string reply = "211-Status of /pub:\r\n";
    for (std::size_t i = 0; i < lineCount; ++i) {
        const auto kind = random() % 10;
        reply += kind == 0 ? "drwxr-xr-x" : kind == 1 ? "lrwxrwxrwx" : "-rw-r--r--";
        reply += "   1 ftpadmin users    ";
        const std::string size = std::to_string(random() >> random() % 32U);
        reply.append(10 - size.size(), ' ');
        reply += size;
        reply += ' ';
        reply += months[random() % std::size(months)];
        reply += ' ';
        reply += std::to_string(10 + random() % 18);
        reply += " 1";
        reply += std::to_string(random() % 10);
        reply += ":30 ";
        reply += words[random() % std::size(words)];
        reply += words[random() % std::size(words)];
        reply += std::to_string(random() % 1000000);
        reply += ".tar.gz";
        reply += kind == 1 ? " -> /pub/target\r\n" : "\r\n";
    }
    return reply + "211 End of Status\r\n";
}

const std::string& reply() {
    static const std::string text = makeReply();
    return text;
}

std::vector<std::string_view> scanLines(const std::string& text) {
    std::vector<std::string_view> lines;
    lines.reserve(lineCount + 2);
    const char* start = text.data();
    const char* const end = start + text.size();
    while (const void* found = std::memchr(start, '\n', static_cast<std::size_t>(end - start))) {
        const char* const lineEnd = static_cast<const char*>(found);
        lines.emplace_back(start, static_cast<std::size_t>(lineEnd - start) - 1);
        start = lineEnd + 1;
    }
    return lines;
}

const std::vector<std::string_view>& lines() {
    static const std::vector<std::string_view> all = scanLines(reply());
    return all;
}

// Processor time: what other programs do meanwhile would hit the longer of two compared pieces harder.
template <typename Work>
double seconds(Work work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double median(std::vector<double>& times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    return *middle;
}

// Times work and, right after it in every round, what it is measured against; the ratio of their medians
// goes into the counters beside the bound.
template <typename Work, typename Base>
void compare(benchmark::State& state, double bound, Work work, Base base) {
    std::vector<double> workTimes;
    std::vector<double> baseTimes;
    for ([[maybe_unused]] auto round : state) {
        workTimes.push_back(seconds(work));
        baseTimes.push_back(seconds(base));
        state.SetIterationTime(workTimes.back());
    }
    state.counters["ratio"] = median(workTimes) / median(baseTimes);
    state.counters["bound"] = bound;
}

void parseAgainstScan(benchmark::State& state) {
    const bool mergeBlanks = state.range(0) != 0;
    lines();
    compare(
        state, 15,
        [&] { benchmark::DoNotOptimize(ParseDirectoryListing(lines(), {.mergeBlanks = mergeBlanks})); },
        [] { benchmark::DoNotOptimize(countLines(reply())); });
}

void orderAgainstParse(benchmark::State& state, BrowserColumn column, double bound) {
    const BrowserListing listing = ParseDirectoryListing(lines(), {});
    compare(
        state, bound, [&] { benchmark::DoNotOptimize(displayOrder(listing, {.column = column})); },
        [] { benchmark::DoNotOptimize(ParseDirectoryListing(lines(), {})); });
}

void orderByName(benchmark::State& state) {
    orderAgainstParse(state, BrowserColumn::name, 1.5);
}

void orderBySize(benchmark::State& state) {
    orderAgainstParse(state, BrowserColumn::size, 1.2);
}

// A directory in which one size has 60,000 digits, beside the same one without: parsed, ordered by size, and
// what the list shows of each row.
void oneHugeSize(benchmark::State& state) {
    const auto work = [](const std::vector<std::string_view>& from) {
        const BrowserListing listing = ParseDirectoryListing(from, {});
        for (const std::uint32_t row : displayOrder(listing, {.column = BrowserColumn::size})) {
            benchmark::DoNotOptimize(cellText(listing, row, BrowserColumn::size, ","));
        }
    };
    const std::string huge = "-rw-r--r-- 1 u g " + std::string(60000, '9') + " Jan 5 12:00 huge";
    std::vector<std::string_view> withHuge = lines();
    withHuge.emplace_back(huge);
    compare(
        state, 1.1, [&] { work(withHuge); }, [&] { work(lines()); });
}

BENCHMARK(parseAgainstScan)->ArgName("mergeBlanks")->Arg(0)->Arg(1)->UseManualTime();
BENCHMARK(orderByName)->UseManualTime();
BENCHMARK(orderBySize)->UseManualTime();
BENCHMARK(oneHugeSize)->UseManualTime();

} // namespace
} // namespace corvel

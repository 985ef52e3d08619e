#include "admin/AccountEditors.h"
#include "admin/AccountLists.h"
#include "admin/Batch.h"
#include "admin/mdlUsersGroups.h"
#include "common/Text.h"
#include "LineScan.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
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
        reply.append("200- | ").append(number).append(" | user").append(number);
        reply.append(" | group").append(std::to_string(uid % 40)).append(" | 3\r\n");
    }
    return reply + "200 Command successful.\r\n";
}

// Runs work once and gives its seconds of processor time.
template <typename Work>
double secondsOf(Work work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// Runs bound and work as often as state wants, and reports the time of work as a multiple of the bound's.
template <typename Bound, typename Work>
void compare(benchmark::State& state, const std::string& boundName, Bound bound, Work work) {
    double boundSeconds = 0;
    double workSeconds = 0;
    for ([[maybe_unused]] auto _ : state) {
        boundSeconds += secondsOf(bound);
        workSeconds += secondsOf(work);
    }
    state.counters["times_" + boundName] = workSeconds / boundSeconds;
    state.counters["ms"] = 1000 * workSeconds / static_cast<double>(state.iterations());
}

// The work includes throwing the table away again.
void parseUserTable(benchmark::State& state) {
    const std::string reply = userTableReply();
    const std::vector<std::string_view> lines = split(reply, lineEnd);
    compare(
        state, "memchr_scan", [&] { benchmark::DoNotOptimize(countLines(reply)); },
        [&] { benchmark::DoNotOptimize(ParseUserTable(1, lines)); });
}
BENCHMARK(parseUserTable)->Unit(benchmark::kMillisecond);

// Every header of the list in turn, from the records to the order of the rows.
void orderUserTable(benchmark::State& state) {
    const std::string reply = userTableReply();
    const std::vector<std::string_view> lines = split(reply, lineEnd);
    const UserTable users = ParseUserTable(1, lines).table;
    const ListOrder order{static_cast<int>(state.range(0)), true};
    compare(
        state, "parse", [&] { benchmark::DoNotOptimize(ParseUserTable(1, lines)); },
        [&] { benchmark::DoNotOptimize(orderedRows(users, order)); });
}
BENCHMARK(orderUserTable)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

// The farthest account of the table, from its uid to the filled editor, beside one pass over the uids alone.
void openUser(benchmark::State& state) {
    const std::string reply = userTableReply();
    UserTable users = ParseUserTable(1, split(reply, lineEnd)).table;
    users.back().ParseUserFile(
        std::vector<std::string_view>{"200-groups | 1 | 2 | 3", "200-admingroups | 2", "200-ips | *@*"});
    const GroupTable groups = emptyGroupTable();
    std::vector<std::int16_t> uids;
    uids.reserve(users.size());
    for (const clsUser& user : users) {
        uids.push_back(user.iUID);
    }
    const std::int16_t uid = uids.back();
    compare(
        state, "uid_scan", [&] { benchmark::DoNotOptimize(std::find(uids.begin(), uids.end(), uid)); },
        [&] {
            const int index = FindUserIndexByUID(users, uid);
            benchmark::DoNotOptimize(InfoToForm(users[static_cast<std::size_t>(index)], groups));
        });
}
BENCHMARK(openUser)->Unit(benchmark::kMicrosecond);

// A group that everybody belongs to, beside parsing the table of its members.
void openGroup(benchmark::State& state) {
    const std::string reply = userTableReply();
    const std::vector<std::string_view> lines = split(reply, lineEnd);
    const UserTable users = ParseUserTable(1, lines).table;
    std::string members = "200-members";
    for (const clsUser& user : users) {
        members += " | " + std::to_string(user.iUID);
    }
    clsGroup group;
    group.ParseGroupFile(std::vector<std::string_view>{members});
    compare(
        state, "parse", [&] { benchmark::DoNotOptimize(ParseUserTable(1, lines)); },
        [&] { benchmark::DoNotOptimize(InfoToForm(group, users)); });
}
BENCHMARK(openGroup)->Unit(benchmark::kMillisecond);

// Nine lines for each of 5,000 users, beside one copy of the text that comes out.
void buildBatch(benchmark::State& state) {
    constexpr int selectedCount = 5000;
    std::vector<std::string> names;
    names.reserve(selectedCount);
    for (int i = 0; i < selectedCount; ++i) {
        names.push_back("user" + std::to_string(i));
    }
    const std::vector<std::string_view> selected(names.begin(), names.end());
    BatchForm form;
    form.chkBatchFlags = form.chkBatchLogins = form.chkBatchHomePath = form.chkBatchVFS = true;
    form.chkBatchTagLine = form.chkBatchSpeed = form.chkBatchCommand = true;
    form.txtBatchLogins = {"2", "1", "0"};
    const std::string lines = batchSequence(form, selected)->sBatchLines;
    compare(
        state, "copy",
        [&] {
            std::string copy = lines;
            benchmark::DoNotOptimize(copy.data());
        },
        [&] { benchmark::DoNotOptimize(batchSequence(form, selected)); });
}
BENCHMARK(buildBatch)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel

#include "DemoProgram.h"

#include <QAbstractItemView>
#include <QEventLoop>
#include <QTimer>
#include <QTimerEvent>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace corvel {
namespace {

double idleSeconds() {
    QEventLoop loop;
    QTimer::singleShot(2000, &loop, &QEventLoop::quit);
    const double start = threadSeconds();
    loop.exec();
    return threadSeconds() - start;
}

// Of a window with 20 sites that have logged in.
double idleSecondsOf(int port, bool encrypts) {
    const auto directory = directoryOf(20, port, encrypts);
    MemoryStore store = normalWindow(port);
    frmMain window(store, directory->path().toStdString());
    window.start();
    while (!window.program().site(20).session.bLoggedIn) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    idleSeconds(); // the logins come to rest
    return idleSeconds();
}

// The processor time of two idle seconds: 20 connected sites beside an empty window with a timer of 50 ms,
// where the ratio should stay below 1.5; and 20 encrypted ones beside them, where it should stay below 1.1.
void idle(benchmark::State& state) {
    ServerThread server({.tls = DemoTls::offered});
    const int port = server.waitForPort();
    for ([[maybe_unused]] auto iteration : state) {
        QWidget empty;
        empty.resize(1000, 640);
        empty.show();
        QTimer timer;
        int ticks = 0;
        QObject::connect(&timer, &QTimer::timeout, &empty, [&ticks] { ++ticks; });
        timer.start(50);
        waitUntilExposed(empty);
        const double bound = idleSeconds();
        timer.stop();
        empty.close();

        const double work = idleSecondsOf(port, false);
        const double encrypted = idleSecondsOf(port, true);
        state.counters["empty_ms"] = bound * 1e3;
        state.counters["corvel_ms"] = work * 1e3;
        state.counters["encrypted_ms"] = encrypted * 1e3;
        state.counters["ratio"] = work / bound;
        state.counters["encrypted_ratio"] = encrypted / work;
    }
}
BENCHMARK(idle)->Iterations(1)->Unit(benchmark::kMillisecond);

// F5 on a directory of 200,000 entries, from the key to the painted list. No turn of the event loop should
// take more than 50 ms, and the memory at its peak not more than 1.5 times that of the list.
void refreshDirectory(benchmark::State& state) {
    constexpr std::size_t entries = 200000;
    ServerThread server({.entries = entries, .chunkBytes = 0});
    const auto directory = directoryOf(1, server.waitForPort());
    MemoryStore store = normalWindow();
    store.setValue("selected_tab", "3");
    frmMain window(store, directory->path().toStdString());
    const double empty = mebibytes("VmRSS:");
    window.start();
    waitUntilExposed(window);
    mdlMain& program = window.program();
    const RemoteList& list = program.site(1).session.browser;
    while (!list.isArranged || list.listings == 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    program.browser().send(1, {{.sCommand = "CWD /big", .bQuiet = true, .iHandler = handler::browser}});
    const auto* const model = window.findChild<QAbstractItemView*>(QStringLiteral("lvwBrowser_1"))->model();
    double longest = 0;
    const auto untilShown = [&](std::uint64_t listing) {
        longest = 0;
        while (list.listings < listing ||
               model->rowCount() != static_cast<int>(list.listing.entries.size()) ||
               program.site(1).session.bAwaitingReply) {
            const double start = threadSeconds();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            longest = std::max(longest, threadSeconds() - start);
        }
    };
    untilShown(list.listings + 1);
    double work = 0;
    std::vector<double> turns;
    std::ofstream("/proc/self/clear_refs") << "5";
    const double before = mebibytes("VmRSS:");
    for ([[maybe_unused]] auto iteration : state) {
        const double start = threadSeconds();
        const std::uint64_t next = list.listings + 1;
        program.browser().refresh(1);
        untilShown(next);
        work += threadSeconds() - start;
        turns.push_back(longest);
    }
    std::ranges::sort(turns);
    state.counters["cpu_ms"] = 1e3 * work / static_cast<double>(state.iterations());
    state.counters["longest_turn_ms"] = 1e3 * turns[turns.size() / 2];
    state.counters["list_MiB"] = before - empty;
    state.counters["peak_MiB"] = mebibytes("VmHWM:") - empty;
}
BENCHMARK(refreshDirectory)->Unit(benchmark::kMillisecond);

// A tick with 100 sites of which nothing is new, with the browser's counters in sight, beside one look at
// every socket and every session. It should stay below 50 microseconds.
void tick(benchmark::State& state) {
    const auto directory = directoryOf(100, 1);
    MemoryStore store = normalWindow();
    store.setValue("selected_tab", "3");
    frmMain window(store, directory->path().toStdString());
    window.start();
    auto& timer = *window.findChild<QTimer*>(QStringLiteral("tmrSocketStatus"));
    while (window.program().site(100).wSock->state() != SocketState::closed) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const auto tickOnce = [&timer] {
        QTimerEvent event(timer.timerId());
        QCoreApplication::sendEvent(&timer, &event);
    };
    tickOnce();
    int ticks = 0;
    QObject::connect(&timer, &QTimer::timeout, &window, [&ticks] { ++ticks; });
    for ([[maybe_unused]] auto iteration : state) {
        tickOnce();
    }
    state.counters["ticks_each"] = static_cast<double>(ticks) / static_cast<double>(state.iterations());
}
BENCHMARK(tick)->Unit(benchmark::kMicrosecond);

void lookAtEverySite(benchmark::State& state) {
    const auto directory = directoryOf(100, 1);
    MemoryStore store = normalWindow();
    frmMain window(store, directory->path().toStdString());
    window.start();
    for ([[maybe_unused]] auto iteration : state) {
        int seen = 0;
        for (int site = 1; site <= window.program().siteCount(); ++site) {
            const Site& looked = window.program().site(site);
            seen += static_cast<int>(looked.wSock->state()) + looked.session.activity.idlers;
        }
        benchmark::DoNotOptimize(seen);
    }
}
BENCHMARK(lookAtEverySite)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace corvel

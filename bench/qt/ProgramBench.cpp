#include "DemoProgram.h"

#include <QEventLoop>
#include <QTimer>
#include <QTimerEvent>

#include <benchmark/benchmark.h>

namespace corvel {
namespace {

// The processor time of two idle seconds: 20 connected sites beside an empty window with a timer of 50 ms.
// The ratio should stay below 1.5.
double idleSeconds() {
    QEventLoop loop;
    QTimer::singleShot(2000, &loop, &QEventLoop::quit);
    const double start = threadSeconds();
    loop.exec();
    return threadSeconds() - start;
}

void idle(benchmark::State& state) {
    ServerThread server({});
    const auto directory = directoryOf(20, server.waitForPort());
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

        MemoryStore store = normalWindow();
        frmMain window(store, directory->path().toStdString());
        window.start();
        while (!window.program().site(20).session.bLoggedIn) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        idleSeconds(); // the logins come to rest
        const double work = idleSeconds();
        state.counters["empty_ms"] = bound * 1e3;
        state.counters["corvel_ms"] = work * 1e3;
        state.counters["ratio"] = work / bound;
    }
}
BENCHMARK(idle)->Iterations(1)->Unit(benchmark::kMillisecond);

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

#include "config/MemoryStore.h"
#include "demo/DemoServer.h"
#include "ui/frmMain.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <atomic>
#include <ctime>
#include <memory>
#include <string>

namespace corvel {
namespace {

// The demo server in a thread of its own, so that its work is not counted as the window's.
class ServerThread : public QThread {
  public:
    ServerThread() { start(); }
    ~ServerThread() override {
        quit();
        wait();
    }

    int waitForPort() {
        while (port_ == 0) {
            QThread::yieldCurrentThread();
        }
        return port_;
    }

  protected:
    void run() override {
        DemoServer server(DemoOptions{});
        server.listen();
        port_ = server.port();
        exec();
    }

  private:
    std::atomic<int> port_ = 0;
};

// A directory with a sites.ini of sites on the server that connect when the window starts.
std::unique_ptr<QTemporaryDir> directoryOf(int sites, int port) {
    auto directory = std::make_unique<QTemporaryDir>();
    QFile file(directory->filePath(QStringLiteral("sites.ini")));
    file.open(QIODevice::WriteOnly);
    for (int i = 0; i < sites; ++i) {
        const std::string text = "name = site\nhost = 127.0.0.1\nport = " + std::to_string(port) +
                                 "\nuser = demo\npass = demo\nconnectonstartup = 1\n\n";
        file.write(text.c_str());
    }
    return directory;
}

MemoryStore normalWindow() {
    MemoryStore store;
    store.setValue("window_state", "0");
    store.setValue("show_sites_list", "1");
    return store;
}

double processSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void waitUntilExposed(const QWidget& window) {
    while (window.windowHandle() == nullptr || !window.windowHandle()->isExposed()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
}

// The processor time of two idle seconds: 20 connected sites beside an empty window with a timer of 50 ms.
// The ratio should stay below 1.5.
double idleSeconds() {
    QEventLoop loop;
    QTimer::singleShot(2000, &loop, &QEventLoop::quit);
    const double start = processSeconds();
    loop.exec();
    return processSeconds() - start;
}

void idle(benchmark::State& state) {
    ServerThread server;
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

} // namespace
} // namespace corvel

#pragma once

#include "common/Ports.h"
#include "config/RememberedServers.h"
#include "demo/DemoServer.h"
#include "ui/frmMain.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QWindow>

#include <atomic>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace corvel {

// A server in a thread of its own, so that its work is not counted as the window's.
class ServerThread : public QThread {
  public:
    // serve: is called in the thread; makes what listens, as a child of parent, and gives its port.
    explicit ServerThread(std::function<int(QObject* parent)> serve) : serve_(std::move(serve)) { start(); }
    explicit ServerThread(const DemoOptions& options)
        : ServerThread([options](QObject* parent) {
              auto* const server = new DemoServer(options, parent);
              server->listen();
              return server->port();
          }) {}
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
        QObject parent;
        port_ = serve_(&parent);
        exec();
    }

  private:
    std::function<int(QObject* parent)> serve_;
    std::atomic<int> port_ = 0;
};

// A directory with a sites.ini of sites on the server that connect when the window starts.
inline std::unique_ptr<QTemporaryDir> directoryOf(int sites, int port, bool encrypts = false) {
    auto directory = std::make_unique<QTemporaryDir>();
    QFile file(directory->filePath(QStringLiteral("sites.ini")));
    file.open(QIODevice::WriteOnly);
    for (int i = 0; i < sites; ++i) {
        const std::string text =
            "name = site\nhost = 127.0.0.1\nport = " + std::to_string(port) +
            "\nuser = demo\npass = demo\nconnectonstartup = 1\nusesslproxy = " + (encrypts ? "1" : "0") +
            "\n\n";
        file.write(text.c_str());
    }
    return directory;
}

// port: of a demo server, whose certificate is trusted there.
inline MemoryStore normalWindow(int port = 0) {
    MemoryStore store;
    trustCertificate(store, "127.0.0.1", port, DemoServer::fingerprint());
    store.setValue("window_state", "0");
    store.setValue("show_sites_list", "1");
    return store;
}

// The processor time of this thread alone, in seconds.
inline double threadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

inline void waitUntilExposed(const QWidget& window) {
    while (window.windowHandle() == nullptr || !window.windowHandle()->isExposed()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
}

} // namespace corvel

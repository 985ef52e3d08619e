#pragma once

#include "demo/DemoServer.h"

#include <QThread>

#include <atomic>
#include <ctime>
#include <functional>
#include <utility>

namespace corvel::test {

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

// The processor time of this thread alone, in seconds.
inline double threadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

} // namespace corvel::test

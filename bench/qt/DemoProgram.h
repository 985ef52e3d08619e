#pragma once

#include "common/Ports.h"
#include "config/RememberedServers.h"
#include "demo/DemoServer.h"
#include "support/qt/ServerThread.h"
#include "ui/frmMain.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QWindow>

#include <fstream>
#include <memory>
#include <string>

namespace corvel {

using test::ServerThread;
using test::threadSeconds;

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

// A number of kB in this process's status (proc(5)), named with its colon, in MiB.
inline double mebibytes(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0;
    while (status >> word && word != key) {
    }
    status >> kilobytes;
    return kilobytes / 1024;
}

// port: of a demo server, whose certificate is trusted there.
inline MemoryStore normalWindow(int port = 0) {
    MemoryStore store;
    trustCertificate(store, "127.0.0.1", port, DemoServer::fingerprint());
    store.setValue("window_state", "0");
    store.setValue("show_sites_list", "1");
    return store;
}

inline void waitUntilExposed(const QWidget& window) {
    while (window.windowHandle() == nullptr || !window.windowHandle()->isExposed()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
}

} // namespace corvel

#include "ui/desktop/StartAndEnd.h"

#include <QSocketNotifier>
#include <QWidget>

#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace corvel {

namespace {

constexpr std::array<int, 3> endSignals = {SIGTERM, SIGINT, SIGHUP};

// A handler may do next to nothing, so it writes a byte for the event loop to find.
std::array<int, 2> pipeEnds = {-1, -1};

void noteSignal(int /*signal*/) {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
}

// What nohup, or a shell for a program in the background, has set aside stays so.
bool isIgnored(int signal) {
    struct sigaction now = {};
    return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

void handleEndSignals(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : endSignals) {
        if (!isIgnored(signal)) {
            sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace

void tellAtStart(const QString& text, StartMessageKind kind) {
    std::fputs(qPrintable(text), kind == StartMessageKind::error ? stderr : stdout);
}

EndSignals::EndSignals(QWidget& window) {
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals end the program at once, as they do anywhere
    }
    auto* const notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [&window] {
        std::array<char, 16> bytes{};
        while (read(pipeEnds[0], bytes.data(), bytes.size()) > 0) {
        }
        window.close();
    });
    handleEndSignals(noteSignal);
}

EndSignals::~EndSignals() {
    handleEndSignals(SIG_DFL);
    for (const int end : pipeEnds) {
        close(end);
    }
}

} // namespace corvel

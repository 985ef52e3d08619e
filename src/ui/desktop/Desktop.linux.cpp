#include "ui/desktop/Desktop.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QUrl>
#include <QWidget>
#include <QWindow>

#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

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

// Whether the system itself may run the file: there are places where every document has the right to be.
bool isProgram(const QFileInfo& file) {
    return file.isFile() && file.isExecutable();
}

// The address that text is: with a scheme of more than one letter, or as people write those of the web. Not
// valid for any other text.
QUrl addressOf(const QString& text) {
    if (text.startsWith("www."_L1, Qt::CaseInsensitive)) {
        return QUrl(u"http://"_s + text);
    }
    QUrl address(text);
    return address.scheme().size() > 1 ? address : QUrl();
}

// The existing file that name means, or an empty text.
QString filePath(const QString& name, const QString& programDirectory) {
    const QString beside = QDir(programDirectory).absoluteFilePath(name);
    return QFileInfo::exists(beside) ? beside : QStandardPaths::findExecutable(name);
}

} // namespace

void tellAtStart(const QString& text, StartMessageKind kind) {
    std::fputs(qPrintable(text), kind == StartMessageKind::error ? stderr : stdout);
}

void keepMemoryPrivate() {
#ifdef NDEBUG
    prctl(PR_SET_DUMPABLE, 0);
#endif
}

EndSignals::EndSignals(QWidget& window) {
    // A file that may not grow any more (ulimit -f) is a failed write like any other, which is told.
    (void)std::signal(SIGXFSZ, SIG_IGN);
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals end the program at once, as they do anywhere
    }
    auto* const notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [&window] {
        std::array<char, 16> bytes{};
        while (::read(pipeEnds[0], bytes.data(), bytes.size()) > 0) {
        }
        window.setProperty(endedBySystem, true);
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

// The way over the widget, setWindowFlags, would hide the window: here the widget is only told, and the
// window below it asks the window manager.
void setAlwaysOnTop(QWidget& window, bool onTop) {
    Qt::WindowFlags flags = window.windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, onTop);
    window.overrideWindowFlags(flags);
    if (QWindow* const native = window.windowHandle()) {
        native->setFlag(Qt::WindowStaysOnTopHint, onTop);
    }
}

void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void openTarget(const QString& target, const QString& programDirectory, const QWidget& /*owner*/) {
    const QFileInfo file(filePath(target, programDirectory));
    if (isProgram(file) && QProcess::startDetached(file.absoluteFilePath(), {}, programDirectory)) {
        return;
    }
    if (file.exists()) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
    } else if (const QUrl address = addressOf(target); address.isValid()) {
        QDesktopServices::openUrl(address);
    }
}

} // namespace corvel

#include "ui/DemoHome.h"
#include "ui/desktop/Desktop.h"
#include "ui/desktop/SystemPorts.h"
#include "ui/frmMain.h"
#include "widgets/TextConversion.h"

#include <QApplication>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <thread>

namespace {

// A question alone is answered where there is no display, too.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv) {
    constexpr std::array<std::string_view, 4> questions = {"--help", "-h", "--version", "-v"};
    if (argc == 2 && std::ranges::count(questions, argv[1]) > 0) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    return std::make_unique<QApplication>(argc, argv);
}

// The window's whole life: gives the program's exit code.
int run(const corvel::StartOptions& options) {
    std::unique_ptr<corvel::DemoHome> demo;
    std::unique_ptr<corvel::SettingsStore> settings;
    if (options.demo) {
        demo = std::make_unique<corvel::DemoHome>();
        if (!demo->errorText().isEmpty()) {
            corvel::tellAtStart(QStringLiteral("corvel --demo: %1\n").arg(demo->errorText()),
                                corvel::StartMessageKind::error);
            return 1;
        }
    } else {
        settings = std::make_unique<corvel::SettingsStore>();
    }
    corvel::StateStore& store = demo ? demo->store() : *settings;
    const std::string directory = demo ? demo->directory() : corvel::toCore(options.directory);
    corvel::frmMain window(store, directory);
    const corvel::EndSignals endSignals(window);
    window.start();
    return QApplication::exec();
}

// Ends the process even where a name that nobody answers for is still looked up, which its threads wait for.
// By now everything is saved.
void endSoon(int code) {
    std::thread([code] {
        constexpr std::chrono::milliseconds patience(500);
        std::this_thread::sleep_for(patience);
        std::_Exit(code);
    }).detach();
}

} // namespace

int main(int argc, char** argv) {
    corvel::keepMemoryPrivate();
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Corvel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVEL_VERSION));
    const corvel::StartOptions options = corvel::readStartOptions(
        QCoreApplication::arguments(),
        corvel::configurationFolder(QCoreApplication::applicationDirPath(), corvel::userFolder()));
    if (!options.message.isEmpty()) {
        corvel::tellAtStart(options.message, options.isWrong ? corvel::StartMessageKind::error
                                                             : corvel::StartMessageKind::answer);
        return options.isWrong ? 1 : 0;
    }

    const int code = run(options);
    endSoon(code);
    return code;
}

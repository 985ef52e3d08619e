#include "config/qt/SettingsStore.h"
#include "ui/DemoHome.h"
#include "ui/EndSignals.h"
#include "ui/frmMain.h"
#include "ui/StartMessage.h"
#include "widgets/SelectionColors.h"
#include "widgets/TextConversion.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace {

struct Options {
    bool demo = false;
    QString directory;
    // What the program says instead of opening its window, if anything.
    QString message;
    bool isWrong = false;
};

Options readOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Administers FTP servers over their control connections."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this help."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Print the version."));
    const QCommandLineOption demo(
        QStringLiteral("demo"),
        QStringLiteral("Run on a server of its own, in memory, with settings of its own."));
    const QCommandLineOption directory(
        QStringLiteral("config-dir"),
        QStringLiteral("Read sites.ini and settings.ini in <dir>, not beside the program."),
        QStringLiteral("dir"), QCoreApplication::applicationDirPath());
    parser.addOptions({help, version, demo, directory});
    Options options;
    if (!parser.parse(arguments)) {
        options.message = parser.errorText() + QStringLiteral("\n\n") + parser.helpText();
        options.isWrong = true;
    } else if (parser.isSet(help)) {
        options.message = parser.helpText();
    } else if (parser.isSet(version)) {
        options.message = QStringLiteral("Corvel " CORVEL_VERSION "\n");
    }
    options.demo = parser.isSet(demo);
    options.directory = QDir::toNativeSeparators(parser.value(directory));
    return options;
}

// A question alone is answered where there is no display, too.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv) {
    constexpr std::array<std::string_view, 4> questions = {"--help", "-h", "--version", "-v"};
    if (argc == 2 && std::ranges::count(questions, argv[1]) > 0) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv) {
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Corvel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVEL_VERSION));
    const Options options = readOptions(QCoreApplication::arguments());
    if (!options.message.isEmpty()) {
        corvel::tellAtStart(options.message, options.isWrong ? corvel::StartMessageKind::error
                                                             : corvel::StartMessageKind::answer);
        return options.isWrong ? 1 : 0;
    }

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
    corvel::fitSelectionColors();
    corvel::StateStore& store = demo ? demo->store() : *settings;
    const std::string directory = demo ? demo->directory() : corvel::toCore(options.directory);
    corvel::frmMain window(store, directory);
    const corvel::EndSignals endSignals(window);
    window.start();
    return QApplication::exec();
}

#include "config/qt/SettingsStore.h"
#include "ui/DemoHome.h"
#include "ui/frmMain.h"
#include "ui/ParentConsole.h"
#include "widgets/SelectionColors.h"
#include "widgets/TextConversion.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <iostream>
#include <memory>

namespace {

struct Options {
    bool demo = false;
    QString directory;
};

Options readOptions(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Administers FTP servers over their control connections."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption demo(
        QStringLiteral("demo"),
        QStringLiteral("Run on a server of its own, in memory, with settings of its own."));
    const QCommandLineOption directory(
        QStringLiteral("config-dir"),
        QStringLiteral("Read sites.ini and settings.ini in <dir>, not beside the program."),
        QStringLiteral("dir"), QCoreApplication::applicationDirPath());
    parser.addOptions({demo, directory});
    parser.process(application);
    return {.demo = parser.isSet(demo), .directory = QDir::toNativeSeparators(parser.value(directory))};
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Corvel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVEL_VERSION));
    corvel::joinParentConsole();
    const Options options = readOptions(application);

    std::unique_ptr<corvel::DemoHome> demo;
    std::unique_ptr<corvel::SettingsStore> settings;
    if (options.demo) {
        demo = std::make_unique<corvel::DemoHome>();
        if (!demo->errorText().isEmpty()) {
            std::cerr << "corvel --demo: " << demo->errorText().toStdString() << '\n';
            return 1;
        }
    } else {
        settings = std::make_unique<corvel::SettingsStore>();
    }
    corvel::leaveParentConsole();
    corvel::fitSelectionColors();
    corvel::StateStore& store = demo ? demo->store() : *settings;
    const std::string directory = demo ? demo->directory() : corvel::toCore(options.directory);
    corvel::frmMain window(store, directory);
    window.start();
    return QApplication::exec();
}

#include "ui/desktop/Desktop.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace corvel {

StartOptions readStartOptions(const QStringList& arguments, const QString& defaultDirectory) {
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
        QStringLiteral("dir"), defaultDirectory);
    parser.addOptions({help, version, demo, directory});
    StartOptions options;
    const bool isParsed = parser.parse(arguments);
    options.demo = parser.isSet(demo);
    options.directory = QDir::toNativeSeparators(parser.value(directory));
    if (!isParsed || options.directory.isEmpty()) {
        const QString problem =
            isParsed ? QStringLiteral("--config-dir needs a directory.") : parser.errorText();
        options.message = problem + QStringLiteral("\n\n") + parser.helpText();
        options.isWrong = true;
    } else if (parser.isSet(help)) {
        options.message = parser.helpText();
    } else if (parser.isSet(version)) {
        options.message = QStringLiteral("Corvel " CORVEL_VERSION "\n");
    }
    return options;
}

bool startProgramAgain(const QStringList& arguments) {
    return QProcess::startDetached(QCoreApplication::applicationFilePath(), arguments);
}

QString userFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
}

QString configurationFolder(const QString& programDirectory, const QString& user) {
    const auto has = [](const QString& folder, const char* file) {
        return QFileInfo::exists(QDir(folder).filePath(QLatin1String(file)));
    };
    const bool hasOwn = has(programDirectory, "sites.ini") || has(programDirectory, "settings.ini");
    if (hasOwn && !has(user, "sites.ini")) {
        return programDirectory;
    }
    // What the system says about rights is not the whole truth everywhere; a file is.
    if (QTemporaryFile(QDir(programDirectory).filePath(QStringLiteral("corvel-XXXXXX"))).open() ||
        !QDir().mkpath(user)) {
        return programDirectory;
    }
    return user;
}

TopmostDialogs::TopmostDialogs(const QAbstractButton& whileChecked, QObject* parent)
    : QObject(parent), whileChecked_(whileChecked) {
    qApp->installEventFilter(this);
    connect(&whileChecked, &QAbstractButton::toggled, this, [](bool isChecked) {
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && qobject_cast<QDialog*>(window) != nullptr) {
                setAlwaysOnTop(*window, isChecked);
                window->raise();
            }
        }
    });
}

bool TopmostDialogs::eventFilter(QObject* watched, QEvent* event) {
    // The event comes before the dialog is on the screen.
    if (event->type() == QEvent::Show && whileChecked_.isChecked()) {
        if (auto* const dialog = qobject_cast<QDialog*>(watched)) {
            setAlwaysOnTop(*dialog, true);
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace corvel

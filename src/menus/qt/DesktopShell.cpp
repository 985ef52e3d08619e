#include "menus/qt/DesktopShell.h"

#include "menus/mdlProcesses.h"
#include "widgets/TextConversion.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace corvel {

namespace {

// Whether the system itself may run the file: there are places where every document has the right to be.
// Batch files need a command interpreter: they are left to the desktop, as a document is.
bool isProgram(const QFileInfo& file) {
    const QString suffix = file.suffix().toLower();
    return file.isFile() && file.isExecutable() && suffix != "bat"_L1 && suffix != "cmd"_L1;
}

// The address that text is: with a scheme of more than one letter, which would be a drive, or as people
// write those of the web. Not valid for any other text.
QUrl addressOf(const QString& text) {
    if (text.startsWith("www."_L1, Qt::CaseInsensitive)) {
        return QUrl(u"http://"_s + text);
    }
    QUrl address(text);
    return address.scheme().size() > 1 ? address : QUrl();
}

} // namespace

void DesktopShell::open(const std::string& target) {
    const QString name = textOf(target, TextEncoding::utf8);
    const QFileInfo file(filePath(name));
    if (isProgram(file) && QProcess::startDetached(file.absoluteFilePath(), {}, programDirectory_)) {
        return;
    }
    if (file.exists()) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
    } else if (const QUrl address = addressOf(name); address.isValid()) {
        QDesktopServices::openUrl(address);
    }
}

// The existing file that name means, or an empty text.
QString DesktopShell::filePath(const QString& name) const {
    if (name.isEmpty()) {
        return {};
    }
    const QString beside = QDir(programDirectory_).absoluteFilePath(name);
    return QFileInfo::exists(beside) ? beside : QStandardPaths::findExecutable(name);
}

void DesktopShell::setClipboardText(const std::string& text) {
    QGuiApplication::clipboard()->setText(textOf(text, TextEncoding::utf8));
}

ProcessId DesktopShell::FindProcessByPath(const std::string& pattern) const {
    return corvel::FindProcessByPath(pattern);
}

bool DesktopShell::KillProcess(ProcessId id) {
    return corvel::KillProcess(id);
}

void DesktopShell::quit() {
    window_.close();
}

} // namespace corvel

#include "menus/qt/OpenTarget.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace corvel {

namespace {

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

#include "ui/desktop/SystemPorts.h"

#include "config/Files.h"
#include "config/WindowState.h"
#include "menus/mdlProcesses.h"
#include "ui/desktop/Desktop.h"
#include "widgets/TextConversion.h"

#include <QClipboard>
#include <QDateTime>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QWidget>

#include <chrono>

namespace corvel {

LockFile::LockFile(const std::string& directory)
    : directory_(fromCore(directory)), file_(fromCore(BuildAppPath("corvel.lock", directory))) {
    file_.setStaleLockTime(0); // age alone says nothing: a program may run for weeks
}

FolderHold LockFile::take() {
    if (file_.isLocked() || file_.tryLock(0)) {
        return FolderHold::ours;
    }
    return file_.error() == QLockFile::LockFailedError   ? FolderHold::anotherCopys
           : file_.error() == QLockFile::PermissionError ? FolderHold::nobodys
           : QFileInfo(directory_).isDir()               ? FolderHold::ours
                                                         : FolderHold::nobodys;
}

SettingsStore::SettingsStore() : settings_(fromCore(storeApplication), fromCore(storeSection)) {}

std::optional<std::string> SettingsStore::value(std::string_view key) const {
    const QVariant stored = settings_.value(fromCore(key));
    return stored.isValid() ? std::optional(toCore(stored.toString())) : std::nullopt;
}

void SettingsStore::setValue(std::string_view key, std::string_view value) {
    settings_.setValue(fromCore(key), fromCore(value));
}

// As the locale writes it at length, but for its time zone: the "t" outside quoted text, and whatever
// brackets stand around it.
std::string QtClock::timeOfDay() const {
    const QTime now = QTime::currentTime();
    const int second = now.msecsSinceStartOfDay() / 1000;
    if (second == shownSecond_) {
        return shown_;
    }
    const QLocale locale = QLocale::system();
    QString format;
    bool isQuoted = false;
    for (const QChar character : locale.timeFormat(QLocale::LongFormat)) {
        isQuoted = isQuoted != (character == QLatin1Char('\''));
        if (isQuoted || character != QLatin1Char('t')) {
            format += character;
        }
    }
    format = format.remove(QStringLiteral("()")).remove(QStringLiteral("[]")).trimmed();
    shownSecond_ = second;
    shown_ = toCore(locale.toString(now, format));
    return shown_;
}

std::string QtClock::stamp() const {
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-HHmmss")).toStdString();
}

std::int64_t QtClock::milliseconds() const {
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
}

void DesktopShell::open(const std::string& target) {
    if (!target.empty()) {
        openTarget(textOf(target), programDirectory_, window_);
    }
}

void DesktopShell::setClipboardText(const std::string& text) {
    QGuiApplication::clipboard()->setText(textOf(text));
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

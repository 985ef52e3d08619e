#include "ui/desktop/Desktop.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QWidget>
#include <QWindow>

#include <string>
#include <windows.h>

#include <shellapi.h>

using namespace Qt::StringLiterals;

namespace corvel {

namespace {

bool writeToFileOrPipe(HANDLE output, const QByteArray& bytes) {
    const DWORD type = GetFileType(output);
    DWORD written = 0;
    return (type == FILE_TYPE_DISK || type == FILE_TYPE_PIPE) &&
           WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0;
}

// The console's own prompt stands there already: it does not wait for programs with windows.
bool writeToParentConsole(const std::wstring& text) {
    // Access is denied where the program has that console already.
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0 && GetLastError() != ERROR_ACCESS_DENIED) {
        return false;
    }
    const HANDLE console = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
    DWORD written = 0;
    const bool isWritten =
        console != INVALID_HANDLE_VALUE &&
        WriteConsoleW(console, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0;
    CloseHandle(console);
    return isWritten;
}

// What the shell is given for target: the file beside the program, an address with its scheme, or target.
QString nameFor(const QString& target, const QDir& programDirectory) {
    const QString beside = programDirectory.absoluteFilePath(target);
    if (QFileInfo::exists(beside)) {
        return QDir::toNativeSeparators(beside);
    }
    return target.startsWith("www."_L1, Qt::CaseInsensitive) ? u"http://"_s + target : target;
}

} // namespace

void tellAtStart(const QString& text, StartMessageKind kind) {
    const bool isError = kind == StartMessageKind::error;
    const HANDLE output = GetStdHandle(isError ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    if (writeToFileOrPipe(output, QString(text).replace(u'\n', QStringLiteral("\r\n")).toUtf8())) {
        return;
    }
    const std::wstring wide = text.toStdWString();
    if (!writeToParentConsole(L"\n" + wide)) {
        MessageBoxW(nullptr, wide.c_str(), L"Corvel", isError ? MB_ICONERROR : MB_ICONINFORMATION);
    }
}

void keepMemoryPrivate() {}

EndSignals::EndSignals(QWidget& /*window*/) {}

EndSignals::~EndSignals() = default;

// The way over the widget, setWindowFlags, would hide the window: here the widget is only told, for the case
// that Qt makes the window anew.
void setAlwaysOnTop(QWidget& window, bool onTop) {
    Qt::WindowFlags flags = window.windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, onTop);
    window.overrideWindowFlags(flags);
    if (window.windowHandle() != nullptr) {
        SetWindowPos(reinterpret_cast<HWND>(window.winId()), onTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0,
                     0, SWP_NOMOVE | SWP_NOSIZE);
    }
}

// Only the thread that has the foreground may give it away, so this one joins its input for a moment.
void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    const HWND handle = reinterpret_cast<HWND>(window.winId());
    if (IsIconic(handle) != FALSE) {
        ShowWindow(handle, SW_RESTORE);
    }
    const DWORD ownThread = GetCurrentThreadId();
    const DWORD otherThread = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
    const bool isJoined = otherThread != 0 && otherThread != ownThread &&
                          AttachThreadInput(ownThread, otherThread, TRUE) != FALSE;
    SetForegroundWindow(handle);
    if (isJoined) {
        AttachThreadInput(ownThread, otherThread, FALSE);
    }
    window.raise();
    window.activateWindow();
}

void openTarget(const QString& target, const QString& programDirectory, const QWidget& owner) {
    const std::wstring name = nameFor(target, QDir(programDirectory)).toStdWString();
    const std::wstring directory = QDir::toNativeSeparators(programDirectory).toStdWString();
    ShellExecuteW(reinterpret_cast<HWND>(owner.winId()), L"open", name.c_str(), L"", directory.c_str(),
                  SW_SHOWNORMAL);
}

} // namespace corvel

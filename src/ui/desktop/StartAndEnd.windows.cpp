#include "ui/desktop/StartAndEnd.h"

#include <QByteArray>
#include <QString>

#include <string>
#include <windows.h>

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

EndSignals::EndSignals(QWidget& /*window*/) {}

EndSignals::~EndSignals() = default;

} // namespace corvel

#include "menus/qt/OpenTarget.h"

#include <QDir>
#include <QFileInfo>
#include <QWidget>

#include <windows.h>

#include <shellapi.h>

using namespace Qt::StringLiterals;

namespace corvel {

namespace {

// What the shell is given for target: the file beside the program, an address with its scheme, or target.
QString nameFor(const QString& target, const QDir& programDirectory) {
    const QString beside = programDirectory.absoluteFilePath(target);
    if (QFileInfo::exists(beside)) {
        return QDir::toNativeSeparators(beside);
    }
    return target.startsWith("www."_L1, Qt::CaseInsensitive) ? u"http://"_s + target : target;
}

} // namespace

void openTarget(const QString& target, const QString& programDirectory, const QWidget& owner) {
    const std::wstring name = nameFor(target, QDir(programDirectory)).toStdWString();
    const std::wstring directory = QDir::toNativeSeparators(programDirectory).toStdWString();
    ShellExecuteW(reinterpret_cast<HWND>(owner.winId()), L"open", name.c_str(), L"", directory.c_str(),
                  SW_SHOWNORMAL);
}

} // namespace corvel

#include "menus/qt/DesktopShell.h"

#include "menus/mdlProcesses.h"
#include "menus/qt/OpenTarget.h"
#include "widgets/TextConversion.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QWidget>

namespace corvel {

void DesktopShell::open(const std::string& target) {
    if (!target.empty()) {
        openTarget(textOf(target, TextEncoding::utf8), programDirectory_, window_);
    }
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

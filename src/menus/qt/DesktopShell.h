#pragma once

#include "common/Ports.h"

#include <QString>

class QWidget;

namespace corvel {

// The Shell port on the real desktop.
class DesktopShell : public Shell {
  public:
    // window: the main window, which quit() closes; it must outlive this object. programDirectory: where the
    // running program lies; programs are started in it.
    DesktopShell(QWidget& window, const QString& programDirectory)
        : window_(window), programDirectory_(programDirectory) {}

    void open(const std::string& target) override;
    void setClipboardText(const std::string& text) override;
    ProcessId FindProcessByPath(const std::string& pattern) const override;
    bool KillProcess(ProcessId id) override;
    void quit() override;

  private:
    QWidget& window_;
    QString programDirectory_;
};

} // namespace corvel

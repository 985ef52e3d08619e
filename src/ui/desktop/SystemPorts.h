#pragma once

#include "common/Ports.h"

#include <QLockFile>
#include <QSettings>
#include <QString>

#include <string>

class QWidget;

namespace corvel {

// The FolderLock port over the file corvel.lock in the folder. A copy that crashed holds nothing.
class LockFile : public FolderLock {
  public:
    // directory: UTF-8.
    explicit LockFile(const std::string& directory);

    FolderHold take() override;

  private:
    QString directory_;
    QLockFile file_;
};

// The StateStore port over the platform's store for the user who runs the program.
class SettingsStore : public StateStore {
  public:
    SettingsStore();

    std::optional<std::string> value(std::string_view key) const override;
    void setValue(std::string_view key, std::string_view value) override;

  private:
    QSettings settings_;
};

// The Clock port over the system's time and its settings for writing it.
class QtClock : public Clock {
  public:
    std::string timeOfDay() const override;
    std::string stamp() const override;
    std::int64_t milliseconds() const override;

  private:
    mutable int shownSecond_ = -1; // of the day, and its text: a batch asks hundreds of times in a second
    mutable std::string shown_;
};

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

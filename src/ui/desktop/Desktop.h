#pragma once

#include <QObject>
#include <QStringList>

class QAbstractButton;
class QWidget;

// How the program is started, what it does to the desktop, and how the system ends it.

namespace corvel {

// What the program was started with.
struct StartOptions {
    bool demo = false;
    QString directory; // of the configuration; with the separators of the platform
    // What the program says instead of opening its window, if anything.
    QString message;
    bool isWrong = false;
};

// arguments: the program's name first. defaultDirectory: where the configuration is unless an option says.
StartOptions readStartOptions(const QStringList& arguments, const QString& defaultDirectory);

// Where one user's configuration is on this system.
QString userFolder();
// Where the configuration is unless an option says: beside the program, where that can be written or has an
// ini file; else in the user's folder, which is made. That one goes before a folder that cannot be written,
// once there are sites in it.
QString configurationFolder(const QString& programDirectory, const QString& user);

enum class StartMessageKind { answer, error };

// Tells a text, which ends with a line end, to the person who started the program, as it ends without a
// window: on standard output or, for an error, on standard error. On Windows, where a program with windows
// has neither unless they lead to a file or a pipe, it goes to the console that the program was started from,
// or else into a message box, which it waits for.
void tellAtStart(const QString& text, StartMessageKind kind);

// Keeps the program's memory, which has the passwords of its sites, out of core dumps and out of the reach of
// the user's other programs (PR_SET_DUMPABLE of Linux), unless it is a debug build. On Windows dumps are the
// system's matter.
void keepMemoryPrivate();

// The property of a window that is true once it is closed because the system wants the program to end: nobody
// may be there to answer a question.
inline constexpr const char* endedBySystem = "endedBySystem";

// While it lives, the system's wish that the program end (on Linux SIGTERM, SIGINT and SIGHUP, as at a logout
// or by Ctrl+C) closes a window as a person does, so that everything is saved; a signal that was ignored, as
// under nohup, stays ignored. On Windows the end of a session comes through Qt, and this does nothing. One at
// a time.
class EndSignals : public QObject {
    Q_OBJECT

  public:
    // window: borrowed, must outlive this object.
    explicit EndSignals(QWidget& window);
    ~EndSignals() override;
};

// Puts window, a top-level widget, in the band of the windows that lie over all others, or takes it back into
// the normal one. A window that is shown stays shown where it is; one that was never shown is in its band
// when it comes up.
void setAlwaysOnTop(QWidget& window, bool onTop);

// Shows a window that is hidden or minimised as it was before, and puts it in front of all others with the
// keyboard, as far as the platform lets a program do so.
void bringToFront(QWidget& window);

// Keeps dialogs in reach of a window that lies over all others: while the button is checked, every dialog
// comes up in the same band, and those that are up follow the button.
class TopmostDialogs : public QObject {
    Q_OBJECT

  public:
    // whileChecked: borrowed, must outlive this object.
    explicit TopmostDialogs(const QAbstractButton& whileChecked, QObject* parent = nullptr);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    const QAbstractButton& whileChecked_;
};

// Starts this program once more, beside itself. False where that fails.
bool startProgramAgain(const QStringList& arguments);

// Opens a program, a document or an address as a double click on it would. target: not empty; a relative name
// is looked for in programDirectory first, and programs are started there, without arguments. owner: the
// window over which the system shows what it has to ask. Nothing says when it fails.
void openTarget(const QString& target, const QString& programDirectory, const QWidget& owner);

} // namespace corvel

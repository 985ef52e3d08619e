#pragma once

#include <QObject>
#include <QStringList>

class QWidget;

namespace corvel {

// How the program is started and how the system ends it.

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

enum class StartMessageKind { answer, error };

// Tells a text, which ends with a line end, to the person who started the program, as it ends without a
// window: on standard output or, for an error, on standard error. On Windows, where a program with windows
// has neither unless they lead to a file or a pipe, it goes to the console that the program was started from,
// or else into a message box, which it waits for.
void tellAtStart(const QString& text, StartMessageKind kind);

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

} // namespace corvel

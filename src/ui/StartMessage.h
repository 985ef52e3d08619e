#pragma once

class QString;

namespace corvel {

enum class StartMessageKind { answer, error };

// Tells a text, which ends with a line end, to the person who started the program, as it ends without a
// window: on standard output or, for an error, on standard error. On Windows, where a program with windows
// has neither unless they lead to a file or a pipe, it goes to the console that the program was started from,
// or else into a message box, which it waits for.
void tellAtStart(const QString& text, StartMessageKind kind);

} // namespace corvel

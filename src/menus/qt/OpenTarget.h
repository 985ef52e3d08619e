#pragma once

class QString;
class QWidget;

namespace corvel {

// Opens a program, a document or an address as a double click on it would. target: not empty; a relative name
// is looked for in programDirectory first, and programs are started there, without arguments. owner: the
// window over which the system shows what it has to ask. Nothing says when it fails.
void openTarget(const QString& target, const QString& programDirectory, const QWidget& owner);

} // namespace corvel

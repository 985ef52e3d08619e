#pragma once

#include <QString>

class QWidget;

namespace corvel {

// Where the guide that comes with the program is, for a program in programDirectory: beside it as it is
// packed, where it is installed, or in the sources that it was built from. Empty where it is nowhere.
QString guidePath(const QString& programDirectory);

// Shows the guide, frmGuide, in a window of its own that goes with owner; one that is open comes to the
// front. Gives what was wrong, for a person; an empty text when all is well.
QString showGuide(QWidget& owner);

} // namespace corvel

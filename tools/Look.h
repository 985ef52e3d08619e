#pragma once

#include <QStringList>

class QWidget;

namespace corvel {

// What a careful eye and hand would not accept in a window that is on screen, a line each: a text that is
// cut, controls that lie over each other or beyond the edge, an order of the Tab key that is not the one on
// screen, a control that a screen reader has no name for.
QStringList faultsOf(const QWidget& window);

} // namespace corvel

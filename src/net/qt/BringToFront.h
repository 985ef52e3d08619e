#pragma once

class QWidget;

namespace corvel {

// Shows a window that is hidden or minimised as it was before, and puts it in front of all others with the
// keyboard, as far as the platform lets a program do so.
void bringToFront(QWidget& window);

} // namespace corvel

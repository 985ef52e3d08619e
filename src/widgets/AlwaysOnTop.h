#pragma once

class QWidget;

namespace corvel {

// Puts window, a top-level widget, in the band of the windows that lie over all others, or takes it back into
// the normal one. A window that is shown stays shown where it is; one that was never shown is in its band
// when it comes up.
void setAlwaysOnTop(QWidget& window, bool onTop);

} // namespace corvel

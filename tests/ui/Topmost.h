#pragma once

class QWidget;

namespace corvel::test {

// Whether a window is shown, in the band of those that lie over all others.
bool isTopmost(const QWidget& window);

} // namespace corvel::test

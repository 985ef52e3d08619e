#pragma once

class QWidget;

namespace corvel {

// Says over parent which program this is and in which version. Returns at once.
void openAboutBox(QWidget& parent);

} // namespace corvel

#pragma once

class QWidget;

namespace corvel {

// A page that fills its place with content, and scrolls it where the place is smaller than content can be.
// Belongs to the caller, and content to it.
QWidget* newScrollPage(QWidget& content);

} // namespace corvel

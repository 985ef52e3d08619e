#pragma once

#include <QColor>

class QPainter;
class QRect;
class QWidget;

namespace corvel {

// How much two opaque colours differ for the eye: 1 to 21, as WCAG 2 counts it.
double contrast(const QColor& one, const QColor& other);

// wanted, as far lighter or darker as it takes for a text on ground to have a contrast of at least 4.5.
QColor readableOn(const QColor& ground, QColor wanted);

// Marks the row of a list that has the focus, selected or not, with a frame: that of the style is lost on the
// ground of a selected row, and two lists with a selection look alike.
void drawFocus(QPainter& painter, const QRect& row, bool isSelected, const QWidget& list);

// Makes the application's palette one that can be read: the hints in empty boxes and lists, which are half
// see-through by default, get a colour of their own, and the selected rows of lists the one that the style
// gives them. To be called again when the palette has become another one.
void keepPaletteReadable();

} // namespace corvel

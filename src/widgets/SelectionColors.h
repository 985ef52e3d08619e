#pragma once

namespace corvel {

// Some styles mark the selected row of a list by a tint that leaves the text its own color, while the palette
// still names another one. Brings the palette of all lists in step with the style, for what paints rows
// itself. Once, at start.
void fitSelectionColors();

} // namespace corvel

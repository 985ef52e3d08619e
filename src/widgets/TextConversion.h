#pragma once

#include "common/TextEncoding.h"

#include <QString>

#include <string>
#include <string_view>

namespace corvel {

// The one place where the bytes of a server or a file become text on screen, and typed text becomes bytes.
// bytes.

// bytes as text, without loss, a leading byte order mark and NULs included: each text for itself as UTF-8, or
// as windows1252 where it is not valid, so that it can still be seen. bytesOf gives them back.
QString textOf(std::string_view bytes);

// text in the encoding. A text with a character that windows1252 lacks goes out as UTF-8 as a whole: mixing
// the two inside one name could not be read by anybody.
std::string bytesOf(const QString& text, TextEncoding encoding);

// bytes for a person to look at: as textOf, with control characters, direction marks and the like as visible
// symbols. For showing only; it cannot be turned back.
QString displayTextOf(std::string_view bytes);

// As displayTextOf, for a cell of a list or another line of its own, and for a name within a text of the
// program's own: shortened to what a screen can show, as shownLine and shownName are, however long the bytes
// are.
QString cellTextOf(std::string_view bytes);
QString nameTextOf(std::string_view bytes);
// text shortened to that many characters.
QString shortenedText(const QString& text, std::size_t most);

// The same for a name as the text of an action or a button, on which "&" marks a letter.
QString captionTextOf(std::string_view bytes);

// text for a tool tip: no more of it, and no wider, than a small screen holds. Qt would obey markup in one,
// down to loading the pictures that it names; toolTipOf has it show that.
QString tipLines(const QString& text);
QString toolTipOf(const QString& text);

// text for the title of a window, shortened. Qt reads a single [*] in one as the place of a mark for
// "modified".
QString titleOf(const QString& text);

// Texts that are UTF-8 by contract: the program's own wording, and what was made with toUtf8.
QString fromCore(std::string_view utf8);
std::string toCore(const QString& text);

} // namespace corvel

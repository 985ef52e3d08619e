#pragma once

#include "common/TextEncoding.h"

#include <QString>

#include <string>
#include <string_view>

namespace corvel {

// The one place where the bytes of a server or a file become text on screen, and typed text becomes bytes.
// bytes.

// bytes as text, without loss: bytesOf with the same encoding gives them back, a leading byte order mark
// and NULs included. Bytes that are not valid in the encoding utf8 are read as windows1252, so that they
// can still be seen; only these need windows1252 to come back.
QString textOf(std::string_view bytes, TextEncoding encoding);

// text in the encoding. A text with a character that windows1252 lacks goes out as UTF-8 as a whole: mixing
// the two inside one name could not be read by anybody.
std::string bytesOf(const QString& text, TextEncoding encoding);

// bytes for a person to look at: as textOf, with control characters, direction marks and the like as visible
// symbols. For showing only; it cannot be turned back.
QString displayTextOf(std::string_view bytes, TextEncoding encoding);

// As displayTextOf, for a cell of a list: cut behind what a screen can show, however long the bytes are.
QString cellTextOf(std::string_view bytes, TextEncoding encoding);

// text for a tool tip. Qt would obey markup in one, down to loading the pictures that it names; this shows
// it.
QString toolTipOf(const QString& text);

// The encoding of a value of unknown origin, such as a line of a local file: utf8 if the bytes are valid
// UTF-8.
TextEncoding encodingOf(std::string_view bytes);

// Texts that are UTF-8 by contract: the program's own wording, and what was made with toUtf8.
QString fromCore(std::string_view utf8);
std::string toCore(const QString& text);

} // namespace corvel

#pragma once

#include <QString>

namespace corvel {

// NAME_index, the name of an element of a control array; the index of a per-site array is the site's.
inline QString elementName(const char* name, int index) {
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index);
}

} // namespace corvel

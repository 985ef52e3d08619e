#pragma once

#include <QString>

namespace corvel {

// NAME_index, the name of an element of a control array; the index of a per-site array is the site's.
QString elementName(const char* name, int index);

} // namespace corvel

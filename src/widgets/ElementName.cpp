#include "widgets/ElementName.h"

namespace corvel {

QString elementName(const char* name, int index) {
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index);
}

} // namespace corvel

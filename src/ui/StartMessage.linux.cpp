#include "ui/StartMessage.h"

#include <QString>

#include <cstdio>

namespace corvel {

void tellAtStart(const QString& text, StartMessageKind kind) {
    std::fputs(qPrintable(text), kind == StartMessageKind::error ? stderr : stdout);
}

} // namespace corvel

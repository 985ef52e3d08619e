#include "net/qt/QtClock.h"

#include "widgets/TextConversion.h"

#include <QDateTime>

namespace corvel {

// The zone is the "t" outside quoted text, and whatever brackets stand around it.
QString longTimeFormat(const QLocale& locale) {
    QString format;
    bool isQuoted = false;
    for (const QChar character : locale.timeFormat(QLocale::LongFormat)) {
        isQuoted = isQuoted != (character == QLatin1Char('\''));
        if (isQuoted || character != QLatin1Char('t')) {
            format += character;
        }
    }
    return format.remove(QStringLiteral("()")).remove(QStringLiteral("[]")).trimmed();
}

std::string QtClock::timeOfDay() const {
    const QLocale locale = QLocale::system();
    return toCore(locale.toString(QTime::currentTime(), longTimeFormat(locale)));
}

std::string QtClock::stamp() const {
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-HHmmss")).toStdString();
}

} // namespace corvel

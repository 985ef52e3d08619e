#include "net/qt/QtClock.h"

#include "widgets/TextConversion.h"

#include <QLocale>
#include <QTime>

namespace corvel {

namespace {

// The locale's long format less its time zone, which is the "t" outside quoted text.
QString longFormatWithoutZone(const QLocale& locale) {
    QString format;
    bool isQuoted = false;
    for (const QChar character : locale.timeFormat(QLocale::LongFormat)) {
        isQuoted = isQuoted != (character == QLatin1Char('\''));
        if (isQuoted || character != QLatin1Char('t')) {
            format += character;
        }
    }
    // What the zone was set apart with, such as the brackets of "(t)".
    format.remove(QStringLiteral("()")).remove(QStringLiteral("[]"));
    return format.trimmed();
}

} // namespace

std::string QtClock::timeOfDay() const {
    const QLocale locale = QLocale::system();
    return toCore(locale.toString(QTime::currentTime(), longFormatWithoutZone(locale)));
}

} // namespace corvel

#include "net/qt/QtClock.h"

#include <QTime>

#include <gtest/gtest.h>

namespace corvel {
namespace {

TEST(QtClock, WritesALongTimeWithoutItsZoneInEveryLocale) {
    const QTime time(21, 7, 5);
    EXPECT_EQ(QLocale::c().toString(time, longTimeFormat(QLocale::c())), QStringLiteral("21:07:05"));
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(german.toString(time, longTimeFormat(german)), QStringLiteral("21:07:05"));
    const QList<QLocale> locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    ASSERT_GT(locales.size(), 100);
    for (const QLocale& locale : locales) {
        const QString text = locale.toString(time, longTimeFormat(locale));
        EXPECT_TRUE(text.contains(locale.toString(5)))
            << locale.name().toStdString() << ": no seconds in " << text.toStdString();
        EXPECT_FALSE(text.contains(QLatin1Char('(')) || text.contains(QLatin1Char('[')))
            << locale.name().toStdString();
        EXPECT_EQ(text, text.trimmed()) << locale.name().toStdString();
        EXPECT_FALSE(text.contains(QStringLiteral("UTC"))) << locale.name().toStdString();
    }
}

} // namespace
} // namespace corvel

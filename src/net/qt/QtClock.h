#pragma once

#include "common/Ports.h"

#include <QLocale>
#include <QString>

namespace corvel {

// How the locale writes a time of day at length, without its time zone; a format for QLocale::toString.
QString longTimeFormat(const QLocale& locale);

// The Clock port over the system's time and its settings for writing it.
class QtClock : public Clock {
  public:
    std::string timeOfDay() const override;
    std::string stamp() const override;
};

} // namespace corvel

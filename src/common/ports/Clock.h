#pragma once

#include <string>

namespace corvel {

// The local time.
class Clock {
  public:
    virtual ~Clock() = default;

    // The time of day as the system's settings write it, long and without time zone; UTF-8.
    virtual std::string timeOfDay() const = 0;

    // Date and time for the name of a file: digits and "-", such that later ones sort behind.
    virtual std::string stamp() const = 0;
};

} // namespace corvel

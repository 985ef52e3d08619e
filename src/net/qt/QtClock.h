#pragma once

#include "common/ports/Clock.h"

namespace corvel {

// The Clock port over the system's time and its settings for writing it.
class QtClock : public Clock {
  public:
    std::string timeOfDay() const override;
};

} // namespace corvel

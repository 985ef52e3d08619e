#include "ui/EndSignals.h"

namespace corvel {

EndSignals::EndSignals(QWidget& /*window*/) {}

EndSignals::~EndSignals() = default;

} // namespace corvel

#include "ui/ParentConsole.h"

namespace corvel {

ParentConsole::ParentConsole() = default;
ParentConsole::~ParentConsole() = default;

} // namespace corvel

#include "ui/ParentConsole.h"

namespace corvel {

void joinParentConsole() {}
void leaveParentConsole() {}

} // namespace corvel

#pragma once

#include <QIcon>

#include <string_view>

namespace corvel {

// One of the program's own icons, drawn afresh at every size: "corvel", "directory", "link", "file",
// "site-connected", "site-disconnected". An icon without a picture for any other name.
QIcon icon(std::string_view name);

} // namespace corvel

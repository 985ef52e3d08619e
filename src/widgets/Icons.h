#pragma once

#include <QByteArray>
#include <QColor>
#include <QIcon>

#include <string_view>

namespace corvel {

// One of the program's own icons, drawn afresh at every size. An icon without a picture for a name that is
// none of these: "corvel"; "directory", "link", "file"; "site-connected", "site-disconnected"; "tab-console",
// "tab-activity", "tab-browser", "tab-stats", "tab-users", "tab-groups", "tab-settings", "tab-results";
// "user-M", "user-V", "user-G", "user-A"; "activity-idle", "activity-up", "activity-down"; "tray-idle",
// "tray-up", "tray-down", "tray-both", "tray-offline"; "lock-closed", "lock-open"; "eye".
// line: the colour of its lines in place of their own, for a ground on which those would drown; badges keep
// theirs.
QIcon icon(std::string_view name, const QColor& line = {});

// One of the icons above, that cuts no holes, as a document of SVG 1.1; empty for a name that is none of
// them.
QByteArray iconSvg(std::string_view name);

} // namespace corvel

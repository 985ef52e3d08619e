#pragma once

#include "config/Settings.h"
#include "config/Sites.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace corvel {

// Opens the settings dialog, frmSettings, over parent: the activity list's columns and colours to change, and
// what settings.ini says to see. Returns at once. save: gets the form when cmdSave is pressed.
void openSettingsDialog(QWidget& parent, SettingsForm form, std::function<void(const SettingsForm&)> save);

// Opens the editor of a site, frmSitesAddEdit, over parent; returns at once. A text that is left as it was
// comes back as the same bytes. accept: what becomes of the form when the OK button is pressed, a message to
// show, with the dialog staying open, or nothing, and the dialog closes.
void openSiteDialog(QWidget& parent, const QString& title, const QString& okCaption, SiteForm form,
                    std::function<std::optional<std::string>(const SiteForm&)> accept);

} // namespace corvel

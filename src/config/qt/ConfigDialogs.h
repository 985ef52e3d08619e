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

// What the editor of a site says.
struct SiteDialogTexts {
    QString title;
    QString okCaption;
    QString connectCaption; // of cmdAddConnect; empty where there is none
    QString folder;         // in which passwords are kept
};

// Opens the editor of a site, frmSitesAddEdit, over parent; returns at once. A text that is left as it was
// comes back as the same bytes. accept: what becomes of the form when the OK button is pressed, or the one
// that connects as well: a message to show, with the dialog staying open, or nothing, and the dialog closes.
void openSiteDialog(QWidget& parent, const SiteDialogTexts& texts, SiteForm form,
                    std::function<std::optional<std::string>(const SiteForm&)> accept);

} // namespace corvel

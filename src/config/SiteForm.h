#pragma once

#include "config/SiteConfig.h"

#include <optional>
#include <string>

namespace corvel {

// What stands in the boxes of frmSitesAddEdit, a member per control. The texts are the bytes that sites.ini
// is to hold; line breaks in them, which a box of one line does not have, are left out everywhere below.
struct SiteForm {
    std::string txtSitename;
    std::string txtHostname;
    std::string txtPort;
    std::string txtUsername;
    std::string txtPassword;
    std::string txtIdent;
    bool chkConnectOnStartup = false;
    bool chkUseSSLProxy = false;

    bool operator==(const SiteForm&) const = default;
};

// The form that shows a site for editing.
SiteForm siteForm(const SiteConfig& site);

// The first thing that is wrong with the form, as the person is told; nothing for a valid form.
std::optional<std::string> siteFormProblem(const SiteForm& form);

// The record that a valid form gives when a site is edited, as the file will hold it: name, host and ident
// without blanks around them.
SiteConfig editedSite(const SiteForm& form);

// The record that a valid form gives when a site is added: its password stays empty until it is edited.
SiteConfig addedSite(const SiteForm& form);

} // namespace corvel

#pragma once

#include "config/SiteConfig.h"

#include <optional>
#include <string>

namespace corvel {

// What stands in the boxes of frmSitesAddEdit, a member per control. Texts are bytes as sites.ini holds them.
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

// The form as the editor shows a site.
SiteForm siteForm(const SiteConfig& site);

// What the form lacks, as the person is told; nothing for a valid one.
std::optional<std::string> siteFormProblem(const SiteForm& form);

// The record of a valid form: as it is when a site is edited, and with an empty password when one is added,
// whose password is stored by editing it afterwards.
SiteConfig editedSite(const SiteForm& form);
SiteConfig addedSite(const SiteForm& form);

} // namespace corvel

#include "config/SiteForm.h"

#include "common/Numbers.h"

namespace corvel {

SiteForm siteForm(const SiteConfig& site) {
    return {.txtSitename = site.name,
            .txtHostname = site.host,
            .txtPort = std::to_string(site.port),
            .txtUsername = site.user,
            .txtPassword = site.pass,
            .txtIdent = site.ident,
            .chkConnectOnStartup = site.connectonstartup,
            .chkUseSSLProxy = site.usesslproxy};
}

std::optional<std::string> siteFormProblem(const SiteForm& form) {
    const double port = leadingNumber(form.txtPort);
    if (form.txtSitename.empty()) {
        return "Please enter a sitename";
    }
    if (form.txtHostname.empty()) {
        return "Please enter a hostname";
    }
    if (port < 1 || port > 65535) {
        return "Please enter a valid port (1 - 65535)";
    }
    if (form.txtUsername.empty()) {
        return "Please enter a username";
    }
    if (form.txtPassword.empty()) {
        return "Please enter a password";
    }
    return std::nullopt;
}

SiteConfig editedSite(const SiteForm& form) {
    return {.name = form.txtSitename,
            .reserved = {},
            .host = form.txtHostname,
            .port = toInt32(form.txtPort),
            .user = form.txtUsername,
            .pass = form.txtPassword,
            .ident = form.txtIdent,
            .connectonstartup = form.chkConnectOnStartup,
            .usesslproxy = form.chkUseSSLProxy};
}

SiteConfig addedSite(const SiteForm& form) {
    SiteConfig site = editedSite(form);
    site.pass.clear();
    return site;
}

} // namespace corvel

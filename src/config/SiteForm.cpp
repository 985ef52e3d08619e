#include "config/SiteForm.h"

#include "common/Numbers.h"
#include "common/Text.h"

#include <array>

namespace corvel {

namespace {

constexpr double lowestPort = 1;
constexpr double highestPort = 65535;

std::string oneLine(std::string text) {
    std::erase_if(text, [](char character) { return character == '\r' || character == '\n'; });
    return text;
}

// The file cannot hold blanks around a value.
std::string trimmed(const std::string& text) {
    return std::string(trim(oneLine(text)));
}

bool hasOuterBlanks(const std::string& text) {
    return trimmed(text) != oneLine(text);
}

bool isPort(const std::string& text) {
    const double port = leadingNumber(oneLine(text));
    return port >= lowestPort && port <= highestPort;
}

} // namespace

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
    struct Check {
        bool isGood;
        const char* message;
    };
    const std::array<Check, 7> checks = {{
        {!trimmed(form.txtSitename).empty(), "Please enter a sitename"},
        {!trimmed(form.txtHostname).empty(), "Please enter a hostname"},
        {isPort(form.txtPort), "Please enter a valid port (1 - 65535)"},
        {!oneLine(form.txtUsername).empty(), "Please enter a username"},
        {!oneLine(form.txtPassword).empty(), "Please enter a password"},
        {!hasOuterBlanks(form.txtUsername), "Please enter a username without blanks around it"},
        {!hasOuterBlanks(form.txtPassword), "Please enter a password without blanks around it"},
    }};
    for (const Check& check : checks) {
        if (!check.isGood) {
            return check.message;
        }
    }
    return std::nullopt;
}

SiteConfig editedSite(const SiteForm& form) {
    return {.name = trimmed(form.txtSitename),
            .reserved = {},
            .host = trimmed(form.txtHostname),
            .port = toInt32(oneLine(form.txtPort)),
            .user = oneLine(form.txtUsername),
            .pass = oneLine(form.txtPassword),
            .ident = trimmed(form.txtIdent),
            .connectonstartup = form.chkConnectOnStartup,
            .usesslproxy = form.chkUseSSLProxy};
}

SiteConfig addedSite(const SiteForm& form) {
    SiteConfig site = editedSite(form);
    site.pass.clear();
    return site;
}

} // namespace corvel

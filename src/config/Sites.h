#pragma once

#include "common/Text.h"
#include "config/Files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvel {

// One configured site. Texts are bytes as sites.ini holds them.
struct SiteConfig {
    std::string name;
    std::string reserved; // stays empty
    std::string host;
    std::int32_t port = 0;
    std::string user;
    std::string pass;
    std::string ident;
    bool connectonstartup = false;
    bool usesslproxy = false;

    bool operator==(const SiteConfig&) const = default;
    ~SiteConfig() { wipe(pass); }
};

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
    bool cmdAddConnect = false; // it was pressed, and not the OK button

    bool operator==(const SiteForm&) const = default;
};

// The form that shows a site for editing.
SiteForm siteForm(const SiteConfig& site);

// The first thing that is wrong with a form.
struct SiteFormProblem {
    std::string message; // as the person is told
    std::string box;     // the name of the box in which it is
};

// Nothing for a valid form.
std::optional<SiteFormProblem> siteFormProblem(const SiteForm& form);

// The record that a valid form gives when a site is edited, as the file will hold it: name, host and ident
// without blanks around them.
SiteConfig editedSite(const SiteForm& form);

// The record that a valid form gives when a site is added: its password stays empty until it is edited,
// unless the site is to be connected at once.
SiteConfig addedSite(const SiteForm& form);

// The form that adds another site like site.
SiteForm duplicateForm(const SiteConfig& site);

// Reads a sites.ini. One with a line longer than any that Corvel writes counts as unknown.
FileContent readSitesFile(std::string_view path);

// The records on the lines of a sites.ini, in their bytes. Every "name" line starts one; keys in front of the
// first belong to none. Lines and values that cannot be read are passed over and leave the default.
std::vector<SiteConfig> parseSites(const std::vector<std::string>& lines);

// The text of a sites.ini with every record whose name is not empty, in their bytes. A line break inside a
// value, which the format cannot hold, is left out.
std::string sitesText(const std::vector<SiteConfig>& sites, std::string_view end);

// What makes one list of sites of another. Places count from 0 in the list that is changed.
struct SitesDifference {
    std::vector<std::pair<std::size_t, SiteConfig>> changed;
    std::vector<std::size_t> removed;
    std::vector<SiteConfig> added;
};

// Sites of the two lists belong together by their names, else by server and user.
SitesDifference sitesDifference(const std::vector<SiteConfig>& now, std::vector<SiteConfig> wanted);

// The same in words, such as "2 added, 1 removed"; empty where there is none.
std::string differenceText(const SitesDifference& difference);

// The step by which a sites.ini is saved.
enum class SaveStep { none, write, ask };

// What to do with the file that gave read when it was loaded and gives now: nothing where it holds text
// already or where nothing was edited here and it has become another, cannot be read or holds something but
// no site; where something was edited then, the person is asked. textRead and text: the sites as sitesText
// writes them, as they were loaded and as they are. isAlone: no other copy of the program works on the file.
SaveStep saveStep(const FileContent& read, const FileContent& now, std::string_view textRead,
                  std::string_view text, bool isAlone);

// Why a file that was to give sites gave none, for a person; empty where it did, or where nothing is in it.
std::string sitesProblem(const FileContent& content);

} // namespace corvel

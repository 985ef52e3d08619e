// The bytes of a sites.ini.
#include "config/Sites.h"

#include "common/Text.h"
#include "Fuzz.h"

#include <algorithm>
#include <string>
#include <vector>

namespace corvel::fuzz {

namespace {

using SiteList = std::vector<SiteConfig>;

bool hasLineBreak(const SiteConfig& site) {
    const std::string texts = site.name + site.host + site.user + site.pass + site.ident;
    return texts.find_first_of("\r\n") != std::string::npos;
}

// What is written is read again as it was.
void checkRoundTrip(const SiteList& sites, std::string_view end) {
    SiteList named = sites;
    std::erase_if(named, [](const SiteConfig& site) { return site.name.empty(); });
    const std::string text = sitesText(sites, end);
    const SiteList again = parseSites(linesOf(text));
    require(again == named, "a site is read as it was written");
    require(sitesText(again, end) == text, "what was read is written as it was");
}

void checkDifference(const SiteList& now, const SiteList& wanted) {
    const SitesDifference difference = sitesDifference(now, wanted);
    SiteList become;
    for (std::size_t i = 0; i < now.size(); ++i) {
        const auto changed =
            std::ranges::find(difference.changed, i, &decltype(difference.changed)::value_type::first);
        if (changed != difference.changed.end()) {
            become.push_back(changed->second);
        } else if (std::ranges::find(difference.removed, i) == difference.removed.end()) {
            become.push_back(now[i]);
        }
    }
    become.insert(become.end(), difference.added.begin(), difference.added.end());
    require(std::ranges::is_permutation(become, wanted), "a difference makes one list of the other");
    require((difference.changed.empty() && difference.removed.empty() && difference.added.empty()) ==
                differenceText(difference).empty(),
            "a difference is told");
}

// A file is refused for one line alone, and else read as it is.
void checkFile(std::string_view bytes) {
    const FileContent content = readSitesFile(fileOf(bytes));
    require(content.state == FileContent::State::known && content.bytes == bytes, "a file is what is in it");
    const std::string line = "\nname = " + std::string(70000, 'x');
    require(!sitesProblem(readSitesFile(fileOf(std::string(bytes) + line))).empty(),
            "a line that nobody wrote by hand makes no site");
}

void checkSave(std::string_view bytes, const SiteList& sites) {
    const FileContent content{.state = FileContent::State::known, .bytes = std::string(bytes)};
    const bool isGood = sitesProblem(content).empty();
    require(isGood || sites.empty(), "a file that gives sites is no problem");
    const std::string text = sitesText(sites, "\n");
    const SaveStep step = saveStep(content, content, text, text + "x", true);
    require(content.bytes == text + "x" || step == (isGood ? SaveStep::write : SaveStep::ask),
            "what is no list of sites is not written over unasked");
    require(saveStep(content, {}, text, text, true) == SaveStep::none ||
                saveStep(content, {}, text, text, true) == SaveStep::write,
            "nobody is asked about sites that stayed");
}

void checkForm(const SiteConfig& site) {
    const SiteForm form = siteForm(site);
    if (!hasLineBreak(site) && !siteFormProblem(form)) {
        require(editedSite(form) == site, "a site that nobody has edited stays");
    }
    SiteForm added = form;
    added.txtPassword = "p";
    if (!siteFormProblem(added)) {
        require(addedSite(added).pass.empty(), "the password of a site that is not connected is not kept");
    }
    require(siteForm(site) == form && duplicateForm(site).txtHostname == form.txtHostname,
            "a form shows the site");
}

} // namespace

void check(std::string_view bytes) {
    const SiteList sites = parseSites(linesOf(bytes));
    checkRoundTrip(sites, "\r\n");
    checkRoundTrip(sites, "\n");
    checkDifference(sites, sites);
    checkDifference(sites, {sites.rbegin(), sites.rend()});
    checkDifference(sites, {});
    SiteList renamed = sites;
    for (SiteConfig& site : renamed) {
        site.name += "x";
    }
    checkDifference(sites, renamed);
    checkDifference({sites.begin(), sites.begin() + static_cast<std::ptrdiff_t>(sites.size() / 2)}, sites);
    std::ranges::for_each(sites, checkForm);
    checkSave(bytes, sites);
    if (isSample(bytes)) { // it takes as long as sixteen of the rest
        checkFile(bytes);
    }
}

void work(std::string_view bytes) {
    sitesText(parseSites(linesOf(bytes)), "\n");
}

} // namespace corvel::fuzz

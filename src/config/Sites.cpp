#include "config/Sites.h"

#include "common/Errors.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "config/Files.h"

#include <algorithm>
#include <array>
#include <variant>

namespace corvel {

namespace {

using SitePlace = std::variant<std::string SiteConfig::*, std::int32_t SiteConfig::*, bool SiteConfig::*>;

struct SiteKey {
    std::string_view key;
    SitePlace place;
};

// In the order in which they are written.
constexpr std::array<SiteKey, 8> siteKeys = {{
    {"name", &SiteConfig::name},
    {"host", &SiteConfig::host},
    {"port", &SiteConfig::port},
    {"user", &SiteConfig::user},
    {"pass", &SiteConfig::pass},
    {"ident", &SiteConfig::ident},
    {"connectonstartup", &SiteConfig::connectonstartup},
    {"usesslproxy", &SiteConfig::usesslproxy},
}};

// value without what a file cannot hold: it would be read back as the end of its line, or as blanks around
// it.
std::string writable(std::string value) {
    std::erase(value, '\n');
    value.erase(value.find_last_not_of("\r ") + 1);
    return value;
}

void read(SiteConfig& site, const SitePlace& place, std::string_view value) {
    if (const auto* const text = std::get_if<std::string SiteConfig::*>(&place)) {
        site.** text = writable(std::string(value));
    } else if (const auto* const number = std::get_if<std::int32_t SiteConfig::*>(&place)) {
        site.** number = toInt32(value);
    } else {
        site.*std::get<bool SiteConfig::*>(place) = toBoolean(value);
    }
}

std::string written(const SiteConfig& site, const SitePlace& place) {
    if (const auto* const text = std::get_if<std::string SiteConfig::*>(&place)) {
        return site.**text;
    }
    if (const auto* const number = std::get_if<std::int32_t SiteConfig::*>(&place)) {
        return std::to_string(site.**number);
    }
    return site.*std::get<bool SiteConfig::*>(place) ? "1" : "0";
}

void apply(const EntryLine& entry, std::vector<SiteConfig>& sites) {
    const auto* const found = std::ranges::find(siteKeys, entry.key, &SiteKey::key);
    if (found == siteKeys.end()) {
        return;
    }
    if (entry.key == "name") {
        sites.emplace_back();
    }
    try {
        read(sites.back(), found->place, entry.value);
    } catch (const ConversionError&) {
        return; // one bad value must not cost the user the sites behind it
    }
}

// Whether somebody wrote something into a file, and it is no list of sites.
bool isStrange(const FileContent& content) {
    constexpr std::string_view blanks = " \t\r\n";
    return content.state == FileContent::State::unknown ||
           (content.bytes.find_first_not_of(blanks) != std::string::npos &&
            parseSites(linesOf(content.bytes)).empty());
}

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

FileContent readSitesFile(std::string_view path) {
    constexpr std::size_t longest = 65536; // bytes
    FileContent content = readFile(path);
    std::size_t number = 1;
    for (std::string_view rest = content.bytes; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        if (end > longest) {
            return {.state = FileContent::State::unknown,
                    .reason = "line " + std::to_string(number) + " is longer than " +
                              std::to_string(longest) + " bytes"};
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return content;
}

std::vector<SiteConfig> parseSites(const std::vector<std::string>& lines) {
    std::vector<SiteConfig> sites(1); // the first one takes the keys in front of every name
    for (const std::string& line : lines) {
        if (const auto entry = parseEntryLine(line, Comments::none)) {
            apply(*entry, sites);
        }
    }
    sites.erase(sites.begin());
    return sites;
}

std::string sitesText(const std::vector<SiteConfig>& sites, std::string_view end) {
    std::string text;
    for (const SiteConfig& site : sites) {
        if (site.name.empty()) {
            continue;
        }
        for (const SiteKey& key : siteKeys) {
            text.append(key.key).append(" = ").append(writable(written(site, key.place))).append(end);
        }
        text += end;
    }
    return text;
}

SitesDifference sitesDifference(const std::vector<SiteConfig>& now, std::vector<SiteConfig> wanted) {
    using Alike = bool (*)(const SiteConfig&, const SiteConfig&);
    constexpr std::array<Alike, 3> alike = {
        [](const SiteConfig& one, const SiteConfig& other) { return one == other; },
        [](const SiteConfig& one, const SiteConfig& other) { return one.name == other.name; },
        [](const SiteConfig& one, const SiteConfig& other) {
            return one.host == other.host && one.port == other.port && one.user == other.user;
        }};
    std::vector<std::optional<SiteConfig>> becomes(now.size());
    for (const Alike isAlike : alike) {
        for (std::size_t i = 0; i < now.size(); ++i) {
            const auto found = std::ranges::find_if(
                wanted, [&](const SiteConfig& site) { return !becomes[i] && isAlike(now[i], site); });
            if (found != wanted.end()) {
                becomes[i] = *found;
                wanted.erase(found);
            }
        }
    }
    SitesDifference difference = {.changed = {}, .removed = {}, .added = std::move(wanted)};
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (!becomes[i]) {
            difference.removed.push_back(i);
        } else if (*becomes[i] != now[i]) {
            difference.changed.emplace_back(i, *becomes[i]);
        }
    }
    return difference;
}

std::string differenceText(const SitesDifference& difference) {
    std::string text;
    const auto add = [&text](std::size_t count, const char* what) {
        if (count > 0) {
            text += (text.empty() ? "" : ", ") + std::to_string(count) + what;
        }
    };
    add(difference.added.size(), " added");
    add(difference.changed.size(), " changed");
    add(difference.removed.size(), " removed");
    return text;
}

SaveStep saveStep(const FileContent& read, const FileContent& now, std::string_view textRead,
                  std::string_view text, bool isAlone) {
    const bool isKnown = now.state != FileContent::State::unknown;
    if (isKnown && now.bytes == text) {
        return SaveStep::none;
    }
    const bool isEdited = text != textRead;
    const bool isTheOneRead = now == read && !isStrange(now) && isAlone;
    if (isTheOneRead || (isEdited && isKnown && now.bytes.empty() && isAlone)) {
        return SaveStep::write;
    }
    return isEdited ? SaveStep::ask : SaveStep::none;
}

std::string sitesProblem(const FileContent& content) {
    if (content.state == FileContent::State::unknown) {
        return content.reason;
    }
    if (!isStrange(content)) {
        return {};
    }
    return content.bytes.find('\0') == std::string::npos ? "no site is in it"
                                                         : "it is not in UTF-8, but perhaps in UTF-16";
}

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

std::optional<SiteFormProblem> siteFormProblem(const SiteForm& form) {
    struct Check {
        bool isGood;
        const char* message;
        const char* box;
    };
    const std::array<Check, 7> checks = {{
        {!trimmed(form.txtSitename).empty(), "Please enter a sitename", "txtSitename"},
        {!trimmed(form.txtHostname).empty(), "Please enter a hostname", "txtHostname"},
        {isPort(form.txtPort), "Please enter a valid port (1 - 65535)", "txtPort"},
        {!oneLine(form.txtUsername).empty(), "Please enter a username", "txtUsername"},
        {!oneLine(form.txtPassword).empty(), "Please enter a password", "txtPassword"},
        {!hasOuterBlanks(form.txtUsername), "Please enter a username without blanks around it",
         "txtUsername"},
        {!hasOuterBlanks(form.txtPassword), "Please enter a password without blanks around it",
         "txtPassword"},
    }};
    for (const Check& check : checks) {
        if (!check.isGood) {
            return SiteFormProblem{.message = check.message, .box = check.box};
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
    if (!form.cmdAddConnect) {
        site.pass.clear();
    }
    return site;
}

SiteForm duplicateForm(const SiteConfig& site) {
    SiteForm form = siteForm(site);
    form.txtSitename += " (copy)";
    return form;
}

} // namespace corvel

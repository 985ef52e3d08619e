#include "config/SitesFile.h"

#include "common/Errors.h"
#include "common/Numbers.h"
#include "config/EntryLine.h"
#include "config/FileAttributes.h"
#include "config/Files.h"

#include <algorithm>
#include <array>
#include <system_error>

namespace corvel {

namespace {

// A key of a record, and how its value is read and written.
struct SiteKey {
    std::string_view key;
    void (*read)(SiteConfig& site, std::string_view value);
    std::string (*write)(const SiteConfig& site);
};

template <auto member>
void readText(SiteConfig& site, std::string_view value) {
    site.*member = value;
}

template <auto member>
std::string writeText(const SiteConfig& site) {
    return site.*member;
}

template <auto member>
void readSwitch(SiteConfig& site, std::string_view value) {
    site.*member = toBoolean(value);
}

template <auto member>
std::string writeSwitch(const SiteConfig& site) {
    return site.*member ? "1" : "0";
}

void readPort(SiteConfig& site, std::string_view value) {
    site.port = toInt32(value);
}

std::string writePort(const SiteConfig& site) {
    return std::to_string(site.port);
}

template <auto member>
constexpr SiteKey textKey(std::string_view key) {
    return {key, readText<member>, writeText<member>};
}

template <auto member>
constexpr SiteKey switchKey(std::string_view key) {
    return {key, readSwitch<member>, writeSwitch<member>};
}

// In the order in which they are written.
constexpr std::array<SiteKey, 8> siteKeys = {{
    textKey<&SiteConfig::name>("name"),
    textKey<&SiteConfig::host>("host"),
    {"port", readPort, writePort},
    textKey<&SiteConfig::user>("user"),
    textKey<&SiteConfig::pass>("pass"),
    textKey<&SiteConfig::ident>("ident"),
    switchKey<&SiteConfig::connectonstartup>("connectonstartup"),
    switchKey<&SiteConfig::usesslproxy>("usesslproxy"),
}};

void apply(const EntryLine& entry, std::vector<SiteConfig>& sites) {
    const auto* const found = std::ranges::find(siteKeys, entry.key, &SiteKey::key);
    if (found == siteKeys.end()) {
        return;
    }
    if (entry.key == "name") {
        sites.emplace_back();
    }
    try {
        found->read(sites.back(), entry.value);
    } catch (const ConversionError&) {
        return; // one bad value must not cost the user the sites behind it
    }
}

// value without what would be read back as the end of its line.
std::string oneLine(std::string value) {
    std::erase(value, '\n');
    value.erase(value.find_last_not_of('\r') + 1);
    return value;
}

// Where the new text is put together, and where it waits, whole, for the old file to go. Only the second
// one can be trusted after a crash.
std::string partialPath(const std::string& path) {
    return path + ".part";
}

std::string completePath(const std::string& path) {
    return path + ".new";
}

// The file that path leads to, there or not: replacing a symbolic link itself would leave its target behind,
// out of date.
std::string resolved(const std::string& path) {
    constexpr int mostLinks = 40; // a circle of links ends somewhere
    std::filesystem::path target = filePath(path);
    std::error_code error;
    for (int link = 0; link < mostLinks && std::filesystem::is_symlink(target, error); ++link) {
        target = target.parent_path() / std::filesystem::read_symlink(target, error);
    }
    const std::u8string text = target.u8string();
    return {text.begin(), text.end()};
}

// As in UTF-16, in which some editors save; no key is found there.
bool holdsNul(const std::string& line) {
    return line.find('\0') != std::string::npos;
}

std::error_code moveFile(const std::string& from, const std::string& to) {
    std::error_code error;
    std::filesystem::rename(filePath(from), filePath(to), error);
    return error;
}

// Whether error says that the directory lets nobody change its files, so that none could be removed either.
bool isForbidden(const std::error_code& error) {
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system;
}

} // namespace

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

std::string sitesText(const std::vector<SiteConfig>& sites, std::string_view lineEnd) {
    std::string text;
    for (const SiteConfig& site : sites) {
        if (site.name.empty()) {
            continue;
        }
        for (const SiteKey& key : siteKeys) {
            text.append(key.key).append(" = ").append(oneLine(key.write(site))).append(lineEnd);
        }
        text += lineEnd;
    }
    return text;
}

SitesReading readSites(const std::string& path) {
    std::string source = resolved(path);
    if (GetFileLength(source) < 1) {
        source = completePath(source);
    }
    const auto lines = readLines(source);
    if (!lines) {
        return {.isUnreadable = true};
    }
    SitesReading reading = {.sites = parseSites(*lines)};
    reading.isUnreadable = reading.sites.empty() && std::ranges::any_of(*lines, holdsNul);
    return reading;
}

SaveResult replaceFile(const std::string& path, std::string_view text) {
    using enum SaveResult::Outcome;
    const std::string target = resolved(path);
    const std::string partial = partialPath(target);
    const std::string complete = completePath(target);
    const bool replacesText = GetFileLength(target) > 0;
    std::error_code error = writePrivateFile(filePath(partial), text);
    if (!error) {
        error = moveFile(partial, complete);
    }
    if (error) {
        DeleteFileForce(partial);
        if (text.empty() && !replacesText) {
            return {};
        }
        return {.outcome = replacesText && isForbidden(error) ? locked : failed, .reason = errorText(error)};
    }
    if (replacesText && !DeleteFileForce(target)) {
        DeleteFileForce(complete);
        return {.outcome = locked, .reason = {}};
    }
    error = moveFile(complete, target);
    return error ? SaveResult{.outcome = failed, .reason = errorText(error)} : SaveResult{};
}

} // namespace corvel

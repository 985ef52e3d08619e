#include "config/SitesFile.h"

#include "common/Errors.h"
#include "common/Numbers.h"
#include "config/EntryLine.h"
#include "config/FileAttributes.h"
#include "config/Files.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace corvel {

namespace {

// A key of a record, and how its value is read and written.
struct SiteKey {
    std::string_view key;
    void (*read)(SiteConfig&, std::string_view);
    std::string (*write)(const SiteConfig&);
};

template <auto Member>
void readText(SiteConfig& site, std::string_view value) {
    site.*Member = value;
}

template <auto Member>
void readSwitch(SiteConfig& site, std::string_view value) {
    site.*Member = toBoolean(value);
}

template <auto Member>
std::string writeText(const SiteConfig& site) {
    return site.*Member;
}

template <auto Member>
std::string writeSwitch(const SiteConfig& site) {
    return site.*Member ? "1" : "0";
}

void readPort(SiteConfig& site, std::string_view value) {
    site.port = toInt32(value);
}
std::string writePort(const SiteConfig& site) {
    return std::to_string(site.port);
}

// In the order in which they are written.
constexpr std::array<SiteKey, 8> keys = {{
    {"name", readText<&SiteConfig::name>, writeText<&SiteConfig::name>},
    {"host", readText<&SiteConfig::host>, writeText<&SiteConfig::host>},
    {"port", readPort, writePort},
    {"user", readText<&SiteConfig::user>, writeText<&SiteConfig::user>},
    {"pass", readText<&SiteConfig::pass>, writeText<&SiteConfig::pass>},
    {"ident", readText<&SiteConfig::ident>, writeText<&SiteConfig::ident>},
    {"connectonstartup", readSwitch<&SiteConfig::connectonstartup>,
     writeSwitch<&SiteConfig::connectonstartup>},
    {"usesslproxy", readSwitch<&SiteConfig::usesslproxy>, writeSwitch<&SiteConfig::usesslproxy>},
}};

void apply(const EntryLine& entry, SiteConfig& site) {
    const auto* const found = std::ranges::find(keys, entry.key, &SiteKey::key);
    if (found == keys.end()) {
        return;
    }
    try {
        found->read(site, entry.value);
    } catch (const ConversionError&) {
        return; // the default stays, and the other keys are still read
    }
}

std::string besidePath(const std::string& path) {
    return path + ".new";
}

std::filesystem::path pathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

SaveResult failure(const std::error_code& error) {
    return {.outcome = SaveResult::Outcome::failed, .reason = error.message()};
}

// Whether error says that the directory lets nobody change its files.
bool isForbidden(const std::error_code& error) {
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system;
}

} // namespace

std::vector<SiteConfig> parseSites(const std::vector<std::string>& lines) {
    // Keys before the first name line go into a record that nobody sees.
    std::vector<SiteConfig> sites(1);
    for (const std::string& line : lines) {
        if (const auto entry = parseEntryLine(line, Comments::none)) {
            if (entry->key == "name") {
                sites.emplace_back();
            }
            apply(*entry, sites.back());
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
        for (const SiteKey& key : keys) {
            text += key.key;
            text += " = ";
            text += key.write(site);
            text += lineEnd;
        }
        text += lineEnd;
    }
    return text;
}

std::vector<SiteConfig> readSites(const std::string& path) {
    const std::string source = FileExists(path) ? path : besidePath(path);
    return GetFileLength(source) < 1 ? std::vector<SiteConfig>() : parseSites(ReadAllLines(source));
}

SaveResult replaceFile(const std::string& path, const std::string& text) {
    const std::string beside = besidePath(path);
    const SaveResult locked = {.outcome = SaveResult::Outcome::locked, .reason = {}};
    const bool replacesText = GetFileLength(path) > 0;
    if (const std::error_code error = writePrivateFile(pathOf(beside), text)) {
        DeleteFileForce(beside);
        // Where no file can be made, the old one could not have been removed either.
        return replacesText && isForbidden(error) ? locked : failure(error);
    }
    if (replacesText && !DeleteFileForce(path)) {
        DeleteFileForce(beside);
        return locked;
    }
    std::error_code error;
    std::filesystem::rename(pathOf(beside), pathOf(path), error);
    return error ? failure(error) : SaveResult{};
}

} // namespace corvel

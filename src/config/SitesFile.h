#pragma once

#include "config/SiteConfig.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The records on the lines of a sites.ini, in their bytes. Every "name" line starts one; keys in front of the
// first belong to none. Lines and values that cannot be read are passed over and leave the default.
std::vector<SiteConfig> parseSites(const std::vector<std::string>& lines);

// The text of a sites.ini with every record whose name is not empty, in their bytes. A line break inside a
// value, which the format cannot hold, is left out.
std::string sitesText(const std::vector<SiteConfig>& sites, std::string_view lineEnd);

// What a sites.ini gave when it was loaded.
struct SitesReading {
    std::vector<SiteConfig> sites;
    // There is a text that could not be read (or is UTF-16), so the list is not what the person has: saving
    // it would destroy the rest.
    bool isUnreadable = false;
};

// Loads the file at path (UTF-8); a missing or empty one gives no sites. Where a crash in the middle of
// replaceFile left the new text beside a file that is gone, that text is loaded.
SitesReading readSites(const std::string& path);

// What came of saving.
struct SaveResult {
    enum class Outcome {
        saved,
        locked, // the old file could not be removed; it stays as it was
        failed, // anything else; a text is still on the disk, in the file or, if that is gone, beside it
    };
    Outcome outcome = Outcome::saved;
    std::string reason; // of a failure, for a person
};

// Makes text the content of the file at path (UTF-8), readable by its owner alone. An old file of some length
// is removed before the new one takes its place, but the new text is whole and on the disk by then, so that
// no crash and no full disk loses both. A path that is a symbolic link keeps leading to the file. Where there
// is neither an old nor a new text, a directory that cannot be written is no failure.
SaveResult replaceFile(const std::string& path, std::string_view text);

} // namespace corvel

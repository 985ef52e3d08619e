#pragma once

#include "config/SiteConfig.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The records in the lines of a sites.ini, without the placeholder that has index 0 elsewhere. Each "name"
// line starts one. Lines that cannot be read are passed over; a switch that is none keeps its default.
std::vector<SiteConfig> parseSites(const std::vector<std::string>& lines);

// The text of a sites.ini that holds the records whose name is not empty, with the given line end.
std::string sitesText(const std::vector<SiteConfig>& sites, std::string_view lineEnd);

// The records of the file at path (UTF-8); none where there is no file. A new text that a crash left beside
// the file is taken where the file itself is gone.
std::vector<SiteConfig> readSites(const std::string& path);

// What came of saving.
struct SaveResult {
    enum class Outcome { saved, locked, failed };
    Outcome outcome = Outcome::saved;
    std::string reason; // of a failure, for a person
};

// Replaces the file at path (UTF-8) by text. The text is first written beside it, readable by its owner
// alone; then the old file is removed, and the new one takes its place. The old file stays where it cannot be
// removed (locked), and where the new text cannot be written whole (failed).
SaveResult replaceFile(const std::string& path, const std::string& text);

} // namespace corvel

#pragma once

#include "config/Files.h"
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

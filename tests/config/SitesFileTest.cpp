#include "config/SitesFile.h"

#include "config/Files.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace corvel::test {
namespace {

struct SitesCase {
    const char* name;
    std::vector<std::string> lines;
    std::vector<SiteConfig> sites;
};

TEST(SitesFile, ReadsRecords) {
    const SiteConfig home = {
        .name = "home", .reserved = {}, .host = "h", .port = 21, .user = "u", .pass = "a=b", .ident = "i"};
    const std::vector<SitesCase> cases = {
        {"nothing", {""}, {}},
        {"two records without a line between",
         {"NAME=home", "  name  =  away  "},
         {{.name = "home"}, {.name = "away"}}},
        {"all keys, blanks and an equals sign in the value",
         {"name = home", "host = h", "port = 21", "user = u", "pass = a=b", "ident = i"},
         {home}},
        {"numbers by their start",
         {"name=a", "port = 2121x", "name=b", "port=abc"},
         {{.name = "a", .port = 2121}, {.name = "b"}}},
        {"switches by word and number",
         {"name=a", "connectonstartup = True", "usesslproxy = -1"},
         {{.name = "a", .connectonstartup = true, .usesslproxy = true}}},
        {"a switch that is none keeps its default, the rest is read",
         {"name=a", "connectonstartup = yes", "host = h"},
         {{.name = "a", .host = "h"}}},
        {"a port beyond 32 bits keeps its default",
         {"name=a", "port = 99999999999", "host=h"},
         {{.name = "a", .host = "h"}}},
        {"keys before the first name", {"host = lost", "name = a"}, {{.name = "a"}}},
        {"what only looks like a comment", {"; name = x", "#name = y", "name = z"}, {{.name = "z"}}},
        {"the last value counts", {"name=a", "host=1", "host=2"}, {{.name = "a", .host = "2"}}},
        {"lines without an equals sign, unknown keys", {"name=a", "host", "colour = red"}, {{.name = "a"}}},
    };
    for (const SitesCase& row : cases) {
        EXPECT_EQ(parseSites(row.lines), row.sites) << row.name;
    }
}

TEST(SitesFile, WritesWhatItReads) {
    const std::vector<SiteConfig> sites = {
        {.name = "home", .host = "h", .port = 21, .user = "u", .pass = "a=b", .connectonstartup = true},
        {.name = ""},
        {.name = "away", .usesslproxy = true},
    };
    const std::string text = sitesText(sites, "\n");
    EXPECT_EQ(text, "name = home\nhost = h\nport = 21\nuser = u\npass = a=b\nident = \nconnectonstartup = 1\n"
                    "usesslproxy = 0\n\n"
                    "name = away\nhost = \nport = 0\nuser = \npass = \nident = \nconnectonstartup = 0\n"
                    "usesslproxy = 1\n\n");
    const TemporaryDirectory directory;
    directory.write("sites.ini", text);
    EXPECT_EQ(readSites(directory.fileNamed("sites.ini")), (std::vector<SiteConfig>{sites[0], sites[2]}));
}

TEST(SitesFile, ReplacesTheOldFile) {
    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("sites.ini");
    for (const char* old : {"", "old text\n"}) {
        directory.write("sites.ini", old);
        std::filesystem::permissions(path, std::filesystem::perms::owner_read);
        EXPECT_EQ(replaceFile(path, "new text\n").outcome, SaveResult::Outcome::saved);
        EXPECT_EQ(directory.read("sites.ini"), "new text\n");
        EXPECT_EQ(std::filesystem::status(path).permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
        EXPECT_EQ(directory.read("sites.ini.new"), "");
    }
}

TEST(SitesFile, KeepsTheOldTextWhereItCannotSave) {
    const TemporaryDirectory directory;
    // A directory in the place of the new text stands for every reason why it cannot be written.
    directory.write("sites.ini", "old text\n");
    std::filesystem::create_directory(directory.fileNamed("sites.ini.new"));
    const SaveResult result = replaceFile(directory.fileNamed("sites.ini"), "new text\n");
    EXPECT_EQ(result.outcome, SaveResult::Outcome::failed);
    EXPECT_FALSE(result.reason.empty());
    EXPECT_EQ(directory.read("sites.ini"), "old text\n");

    const SaveResult nowhere = replaceFile(directory.fileNamed("missing/sites.ini"), "new text\n");
    EXPECT_EQ(nowhere.outcome, SaveResult::Outcome::failed);
}

TEST(SitesFile, FindsTheNewTextThatACrashLeftBeside) {
    const TemporaryDirectory directory;
    directory.write("sites.ini.new", "name = saved\n");
    EXPECT_EQ(readSites(directory.fileNamed("sites.ini")).size(), 1U);
    directory.write("sites.ini", "name = first\nname = second\n");
    EXPECT_EQ(readSites(directory.fileNamed("sites.ini")).size(), 2U);
}

} // namespace
} // namespace corvel::test

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
        {"switches by word and number",
         {"name=a", "port = 2121x", "connectonstartup = True", "usesslproxy = -1"},
         {{.name = "a", .port = 2121, .connectonstartup = true, .usesslproxy = true}}},
        {"a switch that is none keeps its default, the rest is read",
         {"name=a", "connectonstartup = yes", "host = h"},
         {{.name = "a", .host = "h"}}},
        {"a port beyond 32 bits keeps its default",
         {"name=a", "port = 99999999999", "host=h"},
         {{.name = "a", .host = "h"}}},
        {"comments, lost, unknown and broken lines",
         {"; name = x", "host = lost", "name = z", "host", "colour = red"},
         {{.name = "z"}}},
        {"a byte order mark in front", {"\xEF\xBB\xBFname = a"}, {{.name = "a"}}},
        {"bytes as they are", {"name=\xFF\x01 b", "pass=  \xC3"}, {{.name = "\xFF\x01 b", .pass = "\xC3"}}},
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
    EXPECT_EQ(readSites(directory.fileNamed("sites.ini")).sites,
              (std::vector<SiteConfig>{sites[0], sites[2]}));
}

TEST(SitesFile, ReplacesTheOldFile) {
    const TemporaryDirectory directory;
    const std::string path = directory.fileNamed("sites.ini");
    for (const char* old : {"", "old text\n"}) {
        directory.write("sites.ini", old);
        std::filesystem::permissions(filePath(path), std::filesystem::perms::owner_read);
        EXPECT_EQ(replaceFile(path, "new text\n").outcome, SaveResult::Outcome::saved);
        EXPECT_EQ(directory.read("sites.ini"), "new text\n");
        EXPECT_EQ(directory.read("sites.ini.new"), "");
    }
}

TEST(SitesFile, KeepsTheOldTextWhereItCannotSave) {
    const TemporaryDirectory directory;
    // A directory in the place of the new text stands for every reason why it cannot be written.
    directory.write("sites.ini", "old text\n");
    for (const char* beside : {"sites.ini.part", "sites.ini.new"}) {
        directory.makeDirectory(beside);
        const SaveResult result = replaceFile(directory.fileNamed("sites.ini"), "new text\n");
        EXPECT_EQ(result.outcome, SaveResult::Outcome::failed) << beside;
        EXPECT_FALSE(result.reason.empty()) << beside;
        EXPECT_EQ(directory.read("sites.ini"), "old text\n") << beside;
        std::filesystem::remove(filePath(directory.fileNamed(beside)));
    }
    const std::string nowhere = directory.fileNamed("missing/sites.ini");
    EXPECT_EQ(replaceFile(nowhere, "new text\n").outcome, SaveResult::Outcome::failed);
    EXPECT_EQ(replaceFile(nowhere, "").outcome, SaveResult::Outcome::saved); // nothing to lose
}

TEST(SitesFile, FindsTheNewTextThatACrashLeftBeside) {
    struct Row {
        const char* name;
        const char* old; // of sites.ini; nothing: no such file
        const char* beside;
        const char* text;
        std::vector<SiteConfig> sites;
    };
    const std::vector<Row> rows = {
        {"before the new text was whole", nullptr, "sites.ini.part", "name = half", {}},
        {"after the old file was gone", nullptr, "sites.ini.new", "name = new\n", {{.name = "new"}}},
        {"where the old file was empty", "", "sites.ini.new", "name = new\n", {{.name = "new"}}},
        {"before the old file was gone", "name = old\n", "sites.ini.new", "name = new\n", {{.name = "old"}}},
    };
    for (const Row& row : rows) {
        const TemporaryDirectory directory;
        if (row.old != nullptr) {
            directory.write("sites.ini", row.old);
        }
        directory.write(row.beside, row.text);
        const std::string path = directory.fileNamed("sites.ini");
        EXPECT_EQ(readSites(path).sites, row.sites) << row.name;
        EXPECT_FALSE(readSites(path).isUnreadable) << row.name;
        EXPECT_EQ(replaceFile(path, "name = next\n").outcome, SaveResult::Outcome::saved) << row.name;
        EXPECT_EQ(readSites(path).sites, (std::vector<SiteConfig>{{.name = "next"}})) << row.name;
        EXPECT_EQ(directory.read("sites.ini.new"), "") << row.name;
    }
}

// Saving the empty list would cost the person the sites.
TEST(SitesFile, ATextInUtf16IsNotAnEmptyList) {
    const TemporaryDirectory directory;
    directory.write("sites.ini", std::string("\xFF\xFEn\0a\0m\0e\0=\0a\0", 14));
    EXPECT_TRUE(readSites(directory.fileNamed("sites.ini")).isUnreadable);
    directory.write("sites.ini", std::string("name=a\0\n", 8));
    EXPECT_FALSE(readSites(directory.fileNamed("sites.ini")).isUnreadable);
}

TEST(SitesFile, LineBreaksInAValueAddNoLine) {
    const std::vector<SiteConfig> sites = {{.name = "a\nhost = evil\r\n", .host = "b\rc\r"}};
    EXPECT_TRUE(sitesText(sites, "\r\n").starts_with("name = ahost = evil\r\nhost = b\rc\r\nport = 0\r\n"));
}

} // namespace
} // namespace corvel::test

#include "config/Files.h"
#include "config/Sites.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(parseSites(linesOf(text)), (std::vector<SiteConfig>{sites[0], sites[2]}));
}

TEST(SitesFile, IsWrittenOnlyWhereNothingIsLostUnseen) {
    using State = FileContent::State;
    struct Row {
        const char* name;
        FileContent read;
        FileContent now;
        bool isAlone;
        SaveStep unedited;
        SaveStep edited;
    };
    const FileContent missing;
    const FileContent empty = {.state = State::known};
    const FileContent known = {.state = State::known, .bytes = "NAME=home"};
    const FileContent other = {.state = State::known, .bytes = "name = other"};
    const FileContent strange = {.state = State::known, .bytes = "<html>"};
    const FileContent unknown = {.state = State::unknown, .reason = "EIO"};
    using enum SaveStep;
    const std::vector<Row> rows = {
        {"no file as before", missing, missing, true, none, write},
        {"the file that was read", known, known, true, write, write},
        {"the same, with another copy", known, known, false, none, ask},
        {"put there meanwhile", missing, known, true, none, ask},
        {"changed meanwhile", known, other, true, none, ask},
        {"gone meanwhile", known, missing, true, none, write},
        {"emptied meanwhile", known, empty, true, none, write},
        {"cannot be asked", unknown, unknown, true, none, ask},
        {"can be asked by now", unknown, known, true, none, ask},
        {"cannot be asked any more", known, unknown, true, none, ask},
        {"no record in it", strange, strange, true, none, ask},
    };
    for (const Row& row : rows) {
        const std::string textRead = row.read == known ? "name = home" : "";
        EXPECT_EQ(saveStep(row.read, row.now, textRead, textRead, row.isAlone), row.unedited) << row.name;
        EXPECT_EQ(saveStep(row.read, row.now, textRead, "name = new", row.isAlone), row.edited) << row.name;
        EXPECT_EQ(saveStep(row.read, {.state = State::known, .bytes = "name = new"}, textRead, "name = new",
                           row.isAlone),
                  none)
            << row.name;
    }
}

TEST(SitesFile, SaysWhyItGivesNoSites) {
    const auto problemOf = [](std::string bytes) {
        return sitesProblem({.state = FileContent::State::known, .bytes = std::move(bytes)});
    };
    EXPECT_EQ(sitesProblem({}), "");
    EXPECT_EQ(problemOf(" \r\n"), "");
    EXPECT_EQ(problemOf("name=a\n"), "");
    EXPECT_EQ(problemOf("{}"), "no site is in it");
    EXPECT_NE(problemOf(std::string("\xFF\xFEn\0a\0m\0e\0=\0a\0", 14)).find("UTF-16"), std::string::npos);
}

TEST(SitesFile, LineBreaksInAValueAddNoLine) {
    const std::vector<SiteConfig> sites = {{.name = "a\nhost = evil\r\n", .host = "b\rc\r"}};
    EXPECT_TRUE(sitesText(sites, "\r\n").starts_with("name = ahost = evil\r\nhost = b\rc\r\nport = 0\r\n"));
}

} // namespace
} // namespace corvel::test

#include "config/Sites.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

const SiteForm valid = {.txtSitename = "home",
                        .txtHostname = "h",
                        .txtPort = "21",
                        .txtUsername = "u",
                        .txtPassword = "p",
                        .txtIdent = "",
                        .chkConnectOnStartup = true};

TEST(SiteForm, NamesTheFirstProblem) {
    struct Row {
        std::string SiteForm::*box;
        const char* text;
        std::string problem;
    };
    const std::vector<Row> rows = {
        {&SiteForm::txtSitename, " \r\n ", "Please enter a sitename"},
        {&SiteForm::txtHostname, " ", "Please enter a hostname"},
        {&SiteForm::txtPort, "", "Please enter a valid port (1 - 65535)"},
        {&SiteForm::txtPort, "0.9", "Please enter a valid port (1 - 65535)"},
        {&SiteForm::txtPort, "65535", ""},
        {&SiteForm::txtPort, "65535.1", "Please enter a valid port (1 - 65535)"},
        {&SiteForm::txtUsername, "", "Please enter a username"},
        {&SiteForm::txtUsername, " u", "Please enter a username without blanks around it"},
        {&SiteForm::txtPassword, " sec ", "Please enter a password without blanks around it"},
        {&SiteForm::txtPassword, "", "Please enter a password"},
    };
    for (const Row& row : rows) {
        SiteForm form = valid;
        form.*row.box = row.text;
        EXPECT_EQ(siteFormProblem(form).value_or(SiteFormProblem()).message, row.problem) << row.text;
    }
}

TEST(SiteForm, BecomesARecord) {
    EXPECT_EQ(siteForm(editedSite(valid)), valid);
    EXPECT_EQ(addedSite(valid).pass, ""); // stored by editing the site afterwards
    SiteForm form = valid;
    form.txtSitename = form.txtHostname = form.txtIdent = " x y ";
    EXPECT_EQ(editedSite(form).name + editedSite(form).host + editedSite(form).ident, "x yx yx y");
    form.txtPort = "2\n.5";
    form.txtPassword = "a\r\nb\n";
    EXPECT_EQ(editedSite(form).port, 2);
    EXPECT_EQ(editedSite(form).pass, "ab"); // a box of one line holds no line breaks
}

TEST(SitesFile, ReadsRecords) {
    struct Row {
        std::vector<std::string> lines;
        std::vector<SiteConfig> sites;
    };
    const std::vector<Row> rows = {
        {{""}, {}},
        {{"NAME=home", "  name  =  away  "}, {{.name = "home"}, {.name = "away"}}},
        {{"name=a", "port = 2121x", "pass = a=b", "connectonstartup = True", "usesslproxy = -1"},
         {{.name = "a", .port = 2121, .pass = "a=b", .connectonstartup = true, .usesslproxy = true}}},
        // What cannot be read costs neither its record nor the lines behind it.
        {{"name=a", "connectonstartup = yes", "port = 99999999999", "host=h"}, {{.name = "a", .host = "h"}}},
        {{"; name = x", "host = lost", "name = z", "host", "colour = red"}, {{.name = "z"}}},
        {{"\xEF\xBB\xBFname = a"}, {{.name = "a"}}},
        {{"name = \r", "pass = a \r"}, {{.pass = "a"}}}, // as it would be read once it is written
        {{"name=\xFF\x01 b", "pass=  \xC3"}, {{.name = "\xFF\x01 b", .pass = "\xC3"}}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parseSites(row.lines), row.sites) << row.lines.back();
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
    EXPECT_TRUE(sitesText({{.name = "a\nhost = evil\r\n", .host = "b\rc\r"}}, "\r\n")
                    .starts_with("name = ahost = evil\r\nhost = b\rc\r\nport = 0\r\n"));
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
        {"no file, with another copy", missing, missing, false, none, ask},
        {"put there meanwhile", missing, known, true, none, ask},
        {"changed meanwhile", known, other, true, none, ask},
        {"gone meanwhile", known, missing, true, none, write},
        {"emptied meanwhile", known, empty, true, none, write},
        {"cannot be asked", unknown, unknown, true, none, ask},
        {"can be asked by now", unknown, known, true, none, ask},
        {"cannot be asked any more", known, unknown, true, none, ask},
        {"no record in it", strange, strange, true, none, ask},
    };
    const FileContent written = {.state = State::known, .bytes = "name = new"};
    for (const Row& row : rows) {
        const std::string textRead = row.read == known ? "name = home" : "";
        EXPECT_EQ(saveStep(row.read, row.now, textRead, textRead, row.isAlone), row.unedited) << row.name;
        EXPECT_EQ(saveStep(row.read, row.now, textRead, "name = new", row.isAlone), row.edited) << row.name;
        EXPECT_EQ(saveStep(row.read, written, textRead, "name = new", row.isAlone), none) << row.name;
    }
}

TEST(SitesFile, TellsOneListFromAnother) {
    const SiteConfig a = {.name = "a", .host = "x", .port = 1, .user = "u"};
    const SiteConfig b = {.name = "b", .host = "y", .port = 2, .user = "u"};
    SiteConfig edited = a;
    edited.host = "z";
    SiteConfig renamed = b;
    renamed.name = "c";
    const std::vector<std::tuple<std::vector<SiteConfig>, std::vector<SiteConfig>, std::string>> rows = {
        {{a, b}, {b, a}, ""},
        {{a, b}, {edited, renamed}, "2 changed"},
        {{a, a}, {a}, "1 removed"},
        {{a}, {b, a}, "1 added"},
        {{a, b}, {{.name = "new"}}, "1 added, 2 removed"},
    };
    for (const auto& [now, wanted, text] : rows) {
        EXPECT_EQ(differenceText(sitesDifference(now, wanted)), text);
    }
    const SitesDifference difference = sitesDifference({a, b}, {edited, renamed});
    EXPECT_EQ(difference.changed[1], std::pair(std::size_t{1}, renamed));
}

} // namespace
} // namespace corvel

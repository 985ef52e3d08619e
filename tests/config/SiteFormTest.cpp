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
        const char* name;
        void (*spoil)(SiteForm&);
        std::string problem;
    };
    const std::string badPort = "Please enter a valid port (1 - 65535)";
    const std::vector<Row> rows = {
        {"no name", [](SiteForm& f) { f.txtSitename = f.txtHostname = ""; }, "Please enter a sitename"},
        {"no host", [](SiteForm& f) { f.txtHostname = f.txtPort = ""; }, "Please enter a hostname"},
        {"no port", [](SiteForm& f) { f.txtPort = f.txtUsername = ""; }, badPort},
        {"port below 1", [](SiteForm& f) { f.txtPort = "0.9"; }, badPort},
        {"largest port", [](SiteForm& f) { f.txtPort = "65535"; }, ""},
        {"above the largest port", [](SiteForm& f) { f.txtPort = "65535.1"; }, badPort},
        {"no user", [](SiteForm& f) { f.txtUsername = f.txtPassword = ""; }, "Please enter a username"},
        {"a name that the file would lose", [](SiteForm& f) { f.txtSitename = "  "; },
         "Please enter a sitename"},
        {"a name of line breaks", [](SiteForm& f) { f.txtSitename = "\r\n"; }, "Please enter a sitename"},
        {"a host that the file would lose", [](SiteForm& f) { f.txtHostname = " "; },
         "Please enter a hostname"},
        {"a user that the file would cut", [](SiteForm& f) { f.txtUsername = " u"; },
         "Please enter a username without blanks around it"},
        {"a password that the file would cut", [](SiteForm& f) { f.txtPassword = " sec "; },
         "Please enter a password without blanks around it"},
        {"no password", [](SiteForm& f) { f.txtPassword = ""; }, "Please enter a password"},
    };
    for (const Row& row : rows) {
        SiteForm form = valid;
        row.spoil(form);
        EXPECT_EQ(siteFormProblem(form).value_or(""), row.problem) << row.name;
    }
}

TEST(SiteForm, BecomesARecord) {
    SiteForm form = valid;
    form.txtPort = "2.5";
    EXPECT_EQ(editedSite(form).port, 2);
    EXPECT_EQ(editedSite(form).pass, "p");
    EXPECT_EQ(addedSite(form).pass, ""); // stored by editing the site afterwards
    EXPECT_TRUE(addedSite(form).connectonstartup);
    EXPECT_EQ(siteForm(editedSite(valid)), valid);
    form.txtSitename = form.txtHostname = form.txtIdent = " x y ";
    EXPECT_EQ(editedSite(form).name + editedSite(form).host + editedSite(form).ident, "x yx yx y");
    form.txtPort = "21\n21x";
    form.txtPassword = "a\r\nb\n";
    EXPECT_EQ(editedSite(form).port, 2121);
    EXPECT_EQ(editedSite(form).pass, "ab"); // a box of one line holds no line breaks
}

} // namespace
} // namespace corvel

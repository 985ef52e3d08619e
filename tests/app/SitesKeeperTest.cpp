#include "app/SitesKeeper.h"

#include "config/PlatformFiles.h"
#include "config/Sites.h"
#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

namespace corvel::test {
namespace {

const std::string theirs = "name = theirs\n";
const SiteForm form = {
    .txtSitename = "mine", .txtHostname = "h", .txtPort = "1", .txtUsername = "u", .txtPassword = "p"};
const std::string mine = sitesText({addedSite(form)}, platformLineEnd);
const std::string kept = "sites.ini.other-2001-02-03-123456";

TEST(SitesKeeper, AsksWhoseSitesStayAndKeepsTheOthers) {
    for (const bool writesMine : {false, true}) {
        TestProgram program("");
        program.main.addSite(form);
        program.directory.write("sites.ini", theirs);
        program.prompts.answers = {writesMine ? "yes" : "no"};
        EXPECT_FALSE(program.main.SaveSites());
        ASSERT_EQ(program.prompts.asked.size(), 1U);
        EXPECT_NE(program.prompts.asked[0].find("was changed by another program"), std::string::npos);
        EXPECT_EQ(program.directory.read("sites.ini"), writesMine ? mine : theirs);
        EXPECT_EQ(program.directory.read(kept), writesMine ? "" : mine);
        EXPECT_EQ(program.directory.read(kept + "-2"), writesMine ? theirs : "");
    }
}

TEST(SitesKeeper, SaysWhatStandsInItsWay) {
    struct Row {
        const char* file;
        bool isLockFree;
        const char* told;
        const char* asked;
    };
    for (const Row& row : {Row{"<html>", true, "no site is in it", "no site is in it"},
                           Row{"name = a\n", false, "Another Corvel", "another Corvel"}}) {
        TestProgram program(row.file);
        program.lock.isFree = row.isLockFree;
        mdlMain second({.views = program.views,
                        .prompts = program.prompts,
                        .store = program.store,
                        .clock = program.clock,
                        .shell = program.shell,
                        .lock = program.lock,
                        .makeSocket = [](int) { return std::make_unique<FakeSocket>(); }},
                       program.directory.path());
        const std::vector<std::string> problems = second.LoadSites();
        ASSERT_EQ(problems.size(), 1U);
        EXPECT_NE(problems[0].find(row.told), std::string::npos) << problems[0];
        EXPECT_TRUE(second.SaveSites()) << "nothing was edited";
        second.addSite(form);
        EXPECT_FALSE(second.SaveSites());
        ASSERT_EQ(program.prompts.asked.size(), 1U);
        EXPECT_NE(program.prompts.asked[0].find(row.asked), std::string::npos) << program.prompts.asked[0];
        EXPECT_EQ(program.directory.read("sites.ini"), row.file);
    }
}

} // namespace
} // namespace corvel::test

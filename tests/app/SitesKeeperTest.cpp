#include "app/SitesKeeper.h"

#include "config/PlatformFiles.h"
#include "support/TemporaryDirectory.h"
#include "support/TestPorts.h"

#include <gtest/gtest.h>

namespace corvel::test {
namespace {

const std::vector<SiteConfig> edited = {{.name = "mine"}};
const std::string mine = sitesText(edited, platformLineEnd);

struct Keeping {
    TemporaryDirectory directory;
    RecordingPrompts prompts;
    FakeLock lock;
    FixedClock clock;
    SitesKeeper keeper{prompts, lock, clock, directory.fileNamed("sites.ini")};
};

TEST(SitesKeeper, AsksWhoseSitesStayAndKeepsTheOthers) {
    const std::string theirs = "name = theirs\n";
    const std::string kept = "sites.ini.other-2001-02-03-123456";
    for (const bool writesMine : {false, true}) {
        Keeping at;
        at.keeper.load();
        at.directory.write("sites.ini", theirs);
        at.prompts.answers = {writesMine ? "yes" : "no"};
        EXPECT_FALSE(at.keeper.save(edited));
        ASSERT_EQ(at.prompts.asked.size(), 1U);
        EXPECT_NE(at.prompts.asked[0].find("was changed by another program"), std::string::npos);
        EXPECT_EQ(at.directory.read("sites.ini"), writesMine ? mine : theirs);
        EXPECT_EQ(at.directory.read(kept), writesMine ? "" : mine);
        EXPECT_EQ(at.directory.read(kept + "-2"), writesMine ? theirs : "");
    }
}

TEST(SitesKeeper, SaysWhatStandsInItsWay) {
    const std::vector<std::tuple<std::string, std::string, std::string>> rows = {
        // the file, told, asked
        {"<html>", "no site is in it", "no site is in it"},
        {"name = a\n", "Another Corvel", "another Corvel"},
    };
    for (const auto& [file, told, asked] : rows) {
        Keeping at;
        at.lock.isFree = file == "<html>";
        at.directory.write("sites.ini", file);
        const std::vector<SiteConfig> sites = at.keeper.load();
        ASSERT_EQ(at.keeper.problems().size(), 1U);
        EXPECT_NE(at.keeper.problems()[0].find(told), std::string::npos);
        EXPECT_TRUE(at.keeper.save(sites)) << "nothing was edited";
        EXPECT_FALSE(at.keeper.save(edited));
        ASSERT_EQ(at.prompts.asked.size(), 1U);
        EXPECT_NE(at.prompts.asked[0].find(asked), std::string::npos);
        EXPECT_EQ(at.directory.read("sites.ini"), file);
    }
}

} // namespace
} // namespace corvel::test

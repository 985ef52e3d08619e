#include "app/SitesKeeper.h"

#include "config/Files.h"
#include "config/PlatformFiles.h"
#include "support/TemporaryDirectory.h"
#include "support/TestPorts.h"

#include <gtest/gtest.h>

#include <functional>

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
        {"name = a\nname = " + std::string(70000, 'b'), "line 2 is longer", "line 2 is longer"},
        {"name = a\n", "", "another Corvel"},
    };
    for (const auto& [file, told, asked] : rows) {
        Keeping at;
        at.lock.hold = told.empty() ? FolderHold::anotherCopys : FolderHold::ours;
        at.directory.write("sites.ini", file);
        const std::vector<SiteConfig> sites = at.keeper.load();
        EXPECT_EQ(at.keeper.problems().size(), told.empty() ? 0U : 1U);
        for (const std::string& problem : at.keeper.problems()) {
            EXPECT_NE(problem.find(told), std::string::npos);
        }
        EXPECT_TRUE(at.keeper.save(sites)) << "nothing was edited";
        EXPECT_FALSE(at.keeper.save(edited));
        ASSERT_EQ(at.prompts.asked.size(), 1U);
        EXPECT_NE(at.prompts.asked[0].find(asked), std::string::npos);
        EXPECT_EQ(at.directory.read("sites.ini"), file);
    }
}

TEST(SitesKeeper, KeepsAChangeBesideTheFileUntilItIsSaved) {
    Keeping at;
    at.keeper.load();
    EXPECT_EQ(at.keeper.changed(edited), "");
    EXPECT_EQ(at.directory.read("sites.ini.unsaved") + at.directory.read("sites.ini"), mine);
    at.keeper.changed({});
    EXPECT_FALSE(FileExists(at.directory.fileNamed("sites.ini.unsaved"))) << "as they were read";
    at.keeper.changed(edited);
    EXPECT_TRUE(at.keeper.save(edited));
    EXPECT_FALSE(FileExists(at.directory.fileNamed("sites.ini.unsaved")));
}

TEST(SitesKeeper, OffersWhatACrashLeft) {
    struct Row {
        const char* name;
        FolderHold hold;
        std::string left;
        bool isOffered;
        std::function<void(SitesKeeper&)> step;
        std::string unsaved; // behind it, and the text kept beside
        std::string kept;
    };
    const auto nothing = [](SitesKeeper&) {};
    const auto changes = [](SitesKeeper& keeper) { keeper.changed(edited); };
    const std::string left = sitesText({{.name = "left"}}, platformLineEnd);
    using enum FolderHold;
    const std::vector<Row> rows = {
        {"not answered", ours, left, true, [](SitesKeeper& keeper) { keeper.save({}); }, left, ""},
        {"left", ours, left, true, [](SitesKeeper& keeper) { keeper.leaveOffer(); }, "", ""},
        {"taken", ours, left, true, [&](SitesKeeper& keeper) { keeper.takeOffer(), changes(keeper); }, mine,
         ""},
        {"changed before", ours, left, true, changes, mine, left},
        {"changed before, left", ours, left, true,
         [&](SitesKeeper& keeper) { changes(keeper), keeper.leaveOffer(); }, mine, left},
        {"another's", anotherCopys, left, false, changes, left, ""},
        {"no sites in it", ours, "<html>", false, changes, mine, "<html>"},
        {"nothing new", ours, "", false, nothing, "", ""},
    };
    for (const Row& row : rows) {
        Keeping at;
        at.lock.hold = row.hold;
        at.directory.write("sites.ini.unsaved", row.left);
        at.keeper.load();
        EXPECT_EQ(at.keeper.offer().has_value(), row.isOffered) << row.name;
        row.step(at.keeper);
        EXPECT_EQ(at.directory.read("sites.ini.unsaved"), row.unsaved) << row.name;
        EXPECT_EQ(at.directory.read("sites.ini.other-2001-02-03-123456"), row.kept) << row.name;
    }
}

} // namespace
} // namespace corvel::test

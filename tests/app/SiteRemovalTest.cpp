#include "app/SiteRemoval.h"

#include <gtest/gtest.h>

namespace corvel {
namespace {

TEST(SiteRemoval, NamesWhatIsLost) {
    const std::string plain = "Remove the site \"home\"? It leaves sites.ini when Corvel closes.";
    const std::vector<std::pair<RemovalLosses, std::string>> rows = {
        {{}, ""},
        {{.isConnected = true}, "Its connection ends."},
        {{.drafts = 1}, "What is typed and not saved is lost, for 1 user or group."},
        {{.drafts = 2}, "What is typed and not saved is lost, for 2 users and groups."},
        {{.batch = "41 of 300", .hasWaiting = true},
         "Its batch ends at 41 of 300 lines.\r\n\r\nCommands that wait for it are not sent."},
    };
    for (auto [losses, lines] : rows) {
        losses.name = "home";
        EXPECT_EQ(removalQuestion(losses), plain + (lines.empty() ? "" : "\r\n\r\n" + lines));
    }
}

TEST(SiteRemoval, LeadsToANeighbour) {
    EXPECT_EQ(siteAfterRemoval({2, 3, 5}, 3), 5);
    EXPECT_EQ(siteAfterRemoval({2, 3, 5}, 5), 3);
    EXPECT_EQ(siteAfterRemoval({7}, 7), 0);
}

} // namespace
} // namespace corvel

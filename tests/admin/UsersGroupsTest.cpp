#include "admin/AdminSupport.h"
#include "admin/mdlUsersGroups.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

const Lines userLines = {
    "200-usertable",
    "200- | 7 | bob | staff | 3M",
    "200- | 8 | alice | staff | ",
    "200- | 7 | second bob | x | 3",
    "200 ok",
    "",
};

TEST(UserTable, KeepsTheLinesThatHaveFiveFields) {
    const auto [users, bad] = ParseUserTable(2, userLines);
    ASSERT_EQ(users.size(), 3U);
    EXPECT_EQ(users[0].iUID, 7);
    EXPECT_EQ(users[0].sName, "bob");
    EXPECT_EQ(users[0].sStdGroup, "staff");
    EXPECT_EQ(users[0].sFlags, "3M");
    EXPECT_EQ(users[0].my_index, 2);
    EXPECT_FALSE(users[0].got_info);
    EXPECT_EQ(users[1].sFlags, "");
    EXPECT_EQ(bad.count, 0U);
    EXPECT_FALSE(badLinesMessage(bad));
}

TEST(UserTable, PassesOverWhatIsNoAccount) {
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"separator in the name", "200- | 7 | bo | b | staff | 3"},
        {"four fields", "200- | 7 | bob | staff"},
        {"separators run together", "200- | 7 | | bob | staff"},
        {"empty", ""},
    };
    for (const auto& [name, line] : rows) {
        const auto [users, bad] = ParseUserTable(1, Lines{line});
        ASSERT_EQ(users.size(), 1U) << name;
        EXPECT_EQ(users[0].iUID, -1) << name;
        EXPECT_TRUE(isPlaceholder(users[0])) << name;
        EXPECT_EQ(bad.count, 0U) << name;
    }
}

TEST(UserTable, LeavesOutLinesWhoseUidIsNoSixteenBitNumber) {
    const auto [users, bad] = ParseUserTable(1, Lines{"200-x", "p | 70000 | a | g | 3", "p | abc | b | g | 3",
                                                      "p | -40000 | c | g | 3", "p | -1 | d | g | 3"});
    ASSERT_EQ(users.size(), 2U);
    EXPECT_EQ(users[0].iUID, 0) << "a text without a number is 0";
    EXPECT_EQ(users[0].sUIDText, "abc");
    EXPECT_EQ(users[1].iUID, -1);
    EXPECT_FALSE(isPlaceholder(users[1])) << "an account of the server, whatever its id";
    EXPECT_EQ(bad.count, 2U);
    EXPECT_EQ(badLinesMessage(bad),
              "reply line 2: \"70000\" is no 16-bit number, the line is left out, and so is 1 more");
    EXPECT_EQ(badLinesMessage({3, 5, "x", "16-bit number"}),
              "reply line 5: \"x\" is no 16-bit number, the line is left out, and so are 2 more");
    EXPECT_EQ(badLinesMessage({1, 5, "x", "16-bit number"}),
              "reply line 5: \"x\" is no 16-bit number, the line is left out");
}

TEST(GroupTable, KeepsTheLinesThatHaveFourFields) {
    const auto [groups, bad] = ParseGroupTable(3, Lines{"200- | 1 | staff | 12", "200- | 2 | big | 40000",
                                                        "200- | 99999 | far | 40000",
                                                        "200- | 7 | bob | staff | 3M", "200- | 3 | x | "});
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].iGID, 1);
    EXPECT_EQ(groups[0].sName, "staff");
    EXPECT_EQ(groups[0].iUserCount, 12);
    EXPECT_EQ(groups[0].my_index, 3);
    EXPECT_EQ(groups[1].iUserCount, 0);
    EXPECT_EQ(bad.count, 2U);
    EXPECT_EQ(bad.firstLine, 2U);
    EXPECT_EQ(bad.firstText, "40000");

    const GroupTable none = ParseGroupTable(3, Lines{"500 unknown command", ""}).table;
    ASSERT_EQ(none.size(), 1U);
    EXPECT_TRUE(none[0].iGID == -1 && isPlaceholder(none[0]));
}

TEST(Finders, TakeTheFirstMatch) {
    const UserTable users = ParseUserTable(1, userLines).table;
    EXPECT_EQ(FindUserIndexByUID(users, 7), 0);
    EXPECT_EQ(FindUserIndexByUID(users, 9), -1);
    EXPECT_EQ(FindUserIndexByUID({}, 7), -1);
    EXPECT_EQ(findUserByName(users, "alice"), &users[1]);
    EXPECT_EQ(findUserByName(users, "Alice"), nullptr);
    EXPECT_EQ(findUserByName(emptyUserTable(), ""), nullptr);

    const GroupTable groups = ParseGroupTable(1, Lines{"p | 4 | a | 0", "p | 4 | b | 0"}).table;
    EXPECT_EQ(FindGroupIndexByGID(groups, 4), 0);
    EXPECT_EQ(GroupNameOfGID(groups, 4), "a");
}

TEST(Finders, ReadTheIdThatABoxShows) {
    const UserTable users = ParseUserTable(1, userLines).table;
    const std::vector<std::pair<const char*, int>> rows = {
        {"7", 0}, {"   8", 1}, {"8x", 1}, {"", -1}, {"9", -1}, {"65543", -1}, {"99999999999999999999", -1},
    };
    for (const auto& [text, index] : rows) {
        EXPECT_EQ(findUserIndexByText(users, text), index) << '"' << text << '"';
    }
}

} // namespace
} // namespace corvel

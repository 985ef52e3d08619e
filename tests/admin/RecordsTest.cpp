#include "admin/AccountLists.h"
#include "admin/AdminSupport.h"
#include "common/Bounds.h"
#include "common/Errors.h"
#include "common/Text.h"

#include <gtest/gtest.h>

namespace corvel {
namespace {

using Ids = std::vector<std::int16_t>;
using Rows = std::vector<std::size_t>;

TEST(UserFile, FillsEveryFieldAndStartsAfreshOnAReload) {
    clsUser user;
    user.ParseUserFile(Lines{
        "200-userfile", "200-username | bob", "200-groupname | staff", "200-flags | 3M",
        "200-tagline | a | b", "200-homepath | /site/home", "200-ips | bob@10.* |  | *@host",
        "200-vfs | /etc/one", "200-vfsfile | /etc/two", "200-limits | 10 | 20 | 1 | 2 | 3",
        "200-groups | 4 | 5", "200-admingroups | 5", "200-ratios | 0 | 1 | 2 | 3 | 4 | 5 | 6 | 7 | 8 | 9",
        "200-credits | 1536 | -1 | 0.5 | 0 | 0 | 0 | 0 | 0 | 0 | 7", "200 Command successful.", ""});
    EXPECT_TRUE(user.got_info);
    const UserDetails details = user.details();
    EXPECT_EQ((Texts{user.sName, user.sStdGroup, user.sFlags, details.sTagline, details.sHomePath,
                     details.sVFSFile}),
              (Texts{"bob", "staff", "3M", "a | b", "/site/home", "/etc/two"}));
    EXPECT_EQ((std::vector<int>{details.iBWLimitDn, details.iBWLimitUp, details.iLoginsTelnet,
                                details.iLoginsFTP, details.iLoginsHTTP, details.ratios[9]}),
              (std::vector<int>{10, 20, 1, 2, 3, 9}));
    EXPECT_EQ(details.ips, (Texts{"bob@10.*", "", "*@host"}));
    EXPECT_TRUE(user.IsMemberOf(4) && user.IsAdminOf(5) && !user.IsAdminOf(4) && !user.IsMemberOf(-1));
    EXPECT_EQ(details.credits[1], -10000);
    user.ParseUserFile(Lines{"200-flags | 3"});
    EXPECT_TRUE(user.IsMemberOf(-1)) << "lists start afresh";
    EXPECT_EQ(user.details().sTagline, "a | b") << "texts that the reply does not name stay";
}

TEST(UserFile, OddLinesLeaveWhatTheyMust) {
    clsUser user;
    user.ParseUserFile(Lines{"200-groups | 1 | 2", "200-groups | 3 | 4", "200-limits | 9x |  | y | 0 | 0",
                             "200-limits | 1 | 2 | 3 | 4", "200-VFS | x", "200- | y", "200-", "200 ",
                             "abcdvfs | z"});
    EXPECT_EQ(user.details().groups, (Ids{1, 3, 4}));
    EXPECT_EQ(user.details().sVFSFile, "z");
    EXPECT_EQ(user.details().iBWLimitDn, 9);
}

TEST(UserFile, NamesTheTextAndTheLineThatItCannotRead) {
    for (const auto& [line, text] : std::vector<std::pair<std::string_view, const char*>>{
             {"200-username", "reply line 3: \"200-username\""}, {"200-groups | 1 | 40000 | 2", "40000"}}) {
        clsUser user;
        user.got_info = true;
        try {
            user.ParseUserFile(Lines{"200-flags | 1", "", line, "200-flags | 2"});
            ADD_FAILURE() << line << ": nothing was thrown";
        } catch (const ParseError& error) {
            EXPECT_NE(describe(error).find(text), std::string::npos) << describe(error);
        }
        EXPECT_EQ(user.sFlags, "1") << line << ": what came before it stays";
        EXPECT_FALSE(user.got_info) << "half a record is asked for again";
    }
}

TEST(GroupFile, IsAskedForAgainWhereItCannotBeRead) {
    clsGroup group;
    group.ParseGroupFile(
        Lines{"200-description | the | staff", "200-leechslots | -1", "200-vfsfile | a", "200-gadmins | 8"});
    EXPECT_EQ(group.details().sDescription + group.details().sVFSFile, "the | staffa");
    EXPECT_EQ(group.details().iLeechSlots, -1);
    EXPECT_TRUE(group.got_info && group.IsGadmin(8) && !group.IsGadmin(7));
    EXPECT_THROW(group.ParseGroupFile(Lines{"200-gadmins | ", "200-groupslots | 32768"}), ConversionError);
    EXPECT_TRUE(!group.got_info && group.IsGadmin(-1));
}

TEST(UserTable, KeepsTheLinesThatHaveFiveFields) {
    const auto [users, bad] = ParseUserTable(2, Lines{"200-usertable", "200- | 007 | bob | staff | 3M",
                                                      "200- | 7 | second bob | x | ", "200 ok", ""});
    ASSERT_EQ(users.size(), 2U);
    EXPECT_EQ((Texts{rowText(users[0], UserColumn::uid), rowText(users[0], UserColumn::userName),
                     rowText(users[0], UserColumn::group), rowText(users[0], UserColumn::flags)}),
              (Texts{" 007", "bob", "staff", "3M"}));
    EXPECT_EQ(users[0].my_index, 2);
    EXPECT_EQ(FindUserIndexByUID(users, 7), 0) << "the first match";
    EXPECT_EQ(UserNameOfUID(users, 7), "bob");
    EXPECT_EQ(GroupNameOfGID(threeGroups(), 4), "(bad_gid)");
    for (const char* const line : {"200- | 7 | bo | b | staff | 3", "200- | 7 | bob | staff", ""}) {
        const auto [none, noneBad] = ParseUserTable(1, Lines{line});
        EXPECT_TRUE(none.size() == 1 && none[0].iUID == -1 && isPlaceholder(none[0])) << line;
        EXPECT_EQ(noneBad.count, 0U) << line;
    }
}

TEST(Tables, LeaveOutLinesWhoseNumbersAreNone) {
    const auto [users, bad] = ParseUserTable(1, Lines{"200-x", "p | 70000 | a | g | 3", "p | abc | b | g | 3",
                                                      "p | -40000 | c | g | 3", "p | -1 | d | g | 3"});
    ASSERT_EQ(users.size(), 2U);
    EXPECT_EQ(users[0].iUID, 0) << "a text without a number is 0";
    EXPECT_FALSE(isPlaceholder(users[1])) << "an account of the server, whatever its id";
    EXPECT_EQ(badLinesMessage(bad),
              "reply line 2: \"70000\" is no 16-bit number, the line is left out, and so is 1 more");
    const auto [groups, badGroups] = ParseGroupTable(
        3, Lines{"200- | 1 | staff | 12", "200- | 2 | big | 40000", "200- | 7 | bob | staff | 3M"});
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ((Texts{rowText(groups[0], GroupColumn::gid), rowText(groups[0], GroupColumn::groupName),
                     rowText(groups[0], GroupColumn::users)}),
              (Texts{"   1", "staff", "  12"}));
    EXPECT_EQ(badGroups, (BadLines{1, 2, "40000", "16-bit number"}));
}

TEST(Tables, TakeNoMoreThanAListCanShow) {
    const auto [users, bad] = ParseUserTable(1, Lines(mostRecords + 2, "p | 1 | a | g | 3"));
    EXPECT_EQ(users.size(), mostRecords);
    EXPECT_EQ(badLinesMessage(bad), "too many records for a list, the last 2 are left out");
    const std::string name(150, 'n');
    const auto [longUsers, longBad] =
        ParseUserTable(1, Lines(mostRecords, "p | 1 | " + name + " | " + name + " | 3"));
    EXPECT_GT(longUsers.size() * (sizeof(clsUser) + 2 * name.size()), mostRecordBytes / 2);
    EXPECT_LT(longUsers.size() * (sizeof(clsUser) + 2 * name.size()), mostRecordBytes);
    EXPECT_EQ(longBad.tooMany, mostRecords - longUsers.size());
    clsGroup group;
    const std::string ids = "200-members | 1" + replaceAll(std::string(9999, ','), ",", " | 1");
    EXPECT_THROW(group.ParseGroupFile(Lines(8, ids)), ParseError);
    EXPECT_EQ(group.details().members.size(), 65536U);
}

TEST(ListRows, NumbersLineUpAndTheFirstFlagThatCountsGivesTheIcon) {
    EXPECT_EQ(paddedNumber("7"), "   7");
    EXPECT_EQ(paddedNumber("123456"), "  123456") << "blanks for as much as it is longer";
    EXPECT_EQ((Lines{userIconKey("NM"), userIconKey("1N"), userIconKey("31")}), (Lines{"M", "", "A"}));
}

TEST(ListRows, AreOrderedByAColumn) {
    const UserTable users = ParseUserTable(1, Lines{"p | 10 | bob | Staff | 3", "p | 9 | Alice | staff | 1",
                                                    "p | 100 | alice | \xC3\x84ther | ",
                                                    "p | -2 | Zo\xC3\x8B | \xC3\xA4ther | 3"})
                                .table;
    const std::vector<std::pair<ListOrder, Rows>> cases = {
        {{0, false}, {3, 1, 0, 2}},                             // as numbers
        {{0, true}, {2, 0, 1, 3}},  {{1, false}, {1, 2, 0, 3}}, // without case, ties as sent
        {{1, true}, {3, 0, 1, 2}},  {{2, false}, {0, 1, 2, 3}}, {{9, true}, {0, 1, 2, 3}},
    };
    for (const auto& [order, rows] : cases) {
        EXPECT_EQ(orderedRows(users, order), rows) << order.column << order.isDescending;
    }
    EXPECT_EQ(orderedRows(threeGroups(), {2, false}), (Rows{1, 0, 2})) << "2 before 12";
}

} // namespace
} // namespace corvel

#include "admin/ListRows.h"

#include "admin/AdminSupport.h"
#include "admin/TableCommands.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace corvel {
namespace {

using Rows = std::vector<std::size_t>;

TEST(ListRows, NumbersLineUp) {
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"7", "   7"},          {"1234", "1234"}, {"12345", " 12345"},
        {"123456", "  123456"}, {"", "    "},     {"-1", "  -1"},
    };
    for (const auto& [number, padded] : rows) {
        EXPECT_EQ(paddedNumber(number), padded) << number;
    }
}

TEST(ListRows, TheFirstFlagThatCountsGivesTheIcon) {
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"3M", "M"}, {"M1", "M"}, {"NM", "M"}, {"V1", "V"}, {"NV", "V"}, {"1N", ""}, {"GN", ""},
        {"G1", "G"}, {"1G", "G"}, {"1", "A"},  {"31", "A"}, {"3", ""},   {"", ""},   {"mvg", ""},
    };
    for (const auto& [flags, key] : rows) {
        EXPECT_EQ(userIconKey(flags), key) << flags;
    }
}

TEST(ListRows, ShowTheTable) {
    const UserTable users = ParseUserTable(1, Lines{"p | 007 | bob | staff | 3M"}).table;
    ASSERT_EQ(rowCount(users), 1U);
    EXPECT_EQ((Texts{rowText(users[0], UserColumn::uid), rowText(users[0], UserColumn::userName),
                     rowText(users[0], UserColumn::group), rowText(users[0], UserColumn::flags)}),
              (Texts{" 007", "bob", "staff", "3M"}));
    const clsGroup crew = threeGroups()[2];
    EXPECT_EQ((Texts{rowText(crew, GroupColumn::gid), rowText(crew, GroupColumn::groupName),
                     rowText(crew, GroupColumn::users)}),
              (Texts{"   3", "crew", "  12"}));
    EXPECT_EQ(rowCount(emptyUserTable()) + rowCount(emptyGroupTable()), 0U);
}

TEST(ListRows, AreOrderedByAColumn) {
    const UserTable users = ParseUserTable(1, Lines{"p | 10 | bob | Staff | 3", "p | 9 | Alice | staff | 1",
                                                    "p | 100 | alice | \xC3\x84ther | ",
                                                    "p | -2 | Zo\xC3\x8B | \xC3\xA4ther | 3"})
                                .table;
    struct Row {
        const char* name;
        ListOrder order;
        Rows rows;
    };
    const std::vector<Row> rows = {
        {"uid as a number", {0, false}, {3, 1, 0, 2}},
        {"uid backwards", {0, true}, {2, 0, 1, 3}},
        {"name without case, ties as sent", {1, false}, {1, 2, 0, 3}},
        {"backwards, ties as sent", {1, true}, {3, 0, 1, 2}},
        {"letters beyond ASCII", {2, false}, {0, 1, 2, 3}},
        {"no such column", {9, false}, {0, 1, 2, 3}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(orderedRows(users, row.order, TextEncoding::utf8), row.rows) << row.name;
    }
    EXPECT_EQ(orderedRows(emptyUserTable(), {1, false}, TextEncoding::utf8), Rows{});

    const GroupTable groups = threeGroups();
    EXPECT_EQ(orderedRows(groups, {0, true}, TextEncoding::utf8), (Rows{2, 1, 0}));
    EXPECT_EQ(orderedRows(groups, {1, false}, TextEncoding::utf8), (Rows{2, 1, 0}));
    EXPECT_EQ(orderedRows(groups, {2, false}, TextEncoding::utf8), (Rows{1, 0, 2})) << "2 before 12";

    const GroupTable latin =
        ParseGroupTable(1, Lines{"p | 1 | \xE4 | 0", "p | 2 | \xC4 | 0", "p | 3 | z | 0"}).table;
    EXPECT_EQ(orderedRows(latin, {1, false}, TextEncoding::windows1252), (Rows{2, 0, 1}))
        << "one letter, two cases";
}

TEST(ListRows, ASecondClickOnAHeaderFlips) {
    EXPECT_EQ(afterHeaderClick({1, false}, 1), (ListOrder{1, true}));
    EXPECT_EQ(afterHeaderClick({1, true}, 1), (ListOrder{1, false}));
    EXPECT_EQ(afterHeaderClick({1, true}, 0), (ListOrder{0, false}));
}

TEST(TableCommands, AreWhatTheServerKnows) {
    const UserTable users = ParseUserTable(1, Lines{"p | 5 | a | g | 3", "p | -7 | bob | g | 3"}).table;
    EXPECT_EQ(
        written({userTableCommand(), groupTableCommand(), deleteUserCommand("bob"),
                 deleteGroupCommand("staff"), userFileCommand(users, -7), userFileCommand(users, 7),
                 groupFileCommand(threeGroups(), 3)}),
        (Texts{"102 quiet SITE CorvelExt usertable", "103 quiet SITE CorvelExt grouptable",
               "107 SITE DELUSER bob", "106 SITE GRPDEL staff", "104 quiet tag 1 SITE CorvelExt userfile -7",
               "104 quiet tag -1 SITE CorvelExt userfile 7", "105 quiet tag 2 SITE CorvelExt groupfile 3"}));
    UserTable behind(32769, users[0]);
    behind.back().iUID = 6;
    EXPECT_EQ(userFileCommand(behind, 6), (Command{"SITE CorvelExt userfile 6", true, 104, -1, 6}));
}

} // namespace
} // namespace corvel

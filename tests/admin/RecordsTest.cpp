#include "admin/AdminSupport.h"
#include "admin/clsGroup.h"
#include "admin/clsUser.h"
#include "common/Errors.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvel {
namespace {

using Ids = std::vector<std::int16_t>;

const Lines fullUserFile = {
    "200-userfile",
    "200-username | bob",
    "200-groupname | staff",
    "200-flags | 3M",
    "200-tagline | a | b",
    "200-homepath | /site/home",
    "200-ips | bob@10.* |  | *@host",
    "200-vfs | /etc/one",
    "200-vfsfile | /etc/two",
    "200-limits | 10 | 20 | 1 | 2 | 3",
    "200-groups | 4 | 5",
    "200-admingroups | 5",
    "200-ratios | 0 | 1 | 2 | 3 | 4 | 5 | 6 | 7 | 8 | 9",
    "200-credits | 1536 | -1 | 0.5 | 0 | 0 | 0 | 0 | 0 | 0 | 7",
    "200 Command successful.",
    "",
};

TEST(UserFile, FillsEveryField) {
    clsUser user;
    user.ParseUserFile(fullUserFile);
    EXPECT_TRUE(user.got_info);
    EXPECT_EQ((Texts{user.sName, user.sStdGroup, user.sFlags, user.sTagline, user.sHomePath, user.sVFSFile}),
              (Texts{"bob", "staff", "3M", "a | b", "/site/home", "/etc/two"}));
    EXPECT_EQ((std::vector<int>{user.iBWLimitDn, user.iBWLimitUp, user.iLoginsTelnet, user.iLoginsFTP,
                                user.iLoginsHTTP}),
              (std::vector<int>{10, 20, 1, 2, 3}));
    EXPECT_EQ(user.ips(), (Texts{"bob@10.*", "", "*@host"}));
    EXPECT_EQ(user.groups(), (Ids{4, 5}));
    EXPECT_EQ(user.admingroups(), Ids{5});
    EXPECT_TRUE(user.IsMemberOf(4) && user.IsAdminOf(5) && !user.IsAdminOf(4) && !user.IsMemberOf(-1));
    EXPECT_EQ(user.ratios()[9], 9);
    EXPECT_EQ(user.credits()[1], -10000);
    EXPECT_EQ(user.credits()[2], 5000);
}

TEST(UserFile, OddLinesLeaveWhatTheyMust) {
    struct Row {
        const char* name;
        Lines lines;
        Ids groups = {-1};
        Texts ips = {""};
        std::string vfs;
        std::int32_t limitDn = 0;
    };
    const std::vector<Row> rows = {
        {.name = "no lists", .lines = {"200 ok"}},
        {.name = "empty lists", .lines = {"200-groups | ", "200-ips | "}, .ips = {}},
        {.name = "a second groups line goes on at the last element",
         .lines = {"200-groups | 1 | 2", "200-groups | 3 | 4"},
         .groups = {1, 3, 4}},
        {.name = "the later vfs line wins", .lines = {"200-vfsfile | b", "200-vfs | a"}, .vfs = "a"},
        {.name = "four limits", .lines = {"200-limits | 1 | 2 | 3 | 4"}},
        {.name = "six limits", .lines = {"200-limits | 1 | 2 | 3 | 4 | 5 | 6"}},
        {.name = "lenient limits", .lines = {"200-limits | 9x |  | y | 0 | 0"}, .limitDn = 9},
        {.name = "nine ratios", .lines = {"200-ratios | 1 | 1 | 1 | 1 | 1 | 1 | 1 | 1 | 1"}},
        {.name = "unknown and empty keys", .lines = {"200-VFS | x", "200- | y", "200-", "200 ", "200-vfs |"}},
        {.name = "any four characters are a prefix", .lines = {"abcdvfs | z"}, .vfs = "z"},
        {.name = "an empty value", .lines = {"200-vfs | x", "200-vfs | "}},
    };
    for (const Row& row : rows) {
        clsUser user;
        user.ParseUserFile(row.lines);
        EXPECT_EQ(user.groups(), row.groups) << row.name;
        EXPECT_EQ(user.ips(), row.ips) << row.name;
        EXPECT_EQ(user.sVFSFile, row.vfs) << row.name;
        EXPECT_EQ(user.iBWLimitDn, row.limitDn) << row.name;
        EXPECT_EQ(user.ratios()[0], 0) << row.name;
        EXPECT_TRUE(user.got_info) << row.name;
    }
}

TEST(UserFile, StartsAfreshOnAReload) {
    clsUser user;
    user.ParseUserFile(fullUserFile);
    const clsUser before = user;
    user.ParseUserFile(Lines{"200-flags | 3"});
    EXPECT_EQ(user.groups(), Ids{-1});
    EXPECT_TRUE(user.IsMemberOf(-1));
    EXPECT_EQ(user.credits()[0], 0);
    EXPECT_EQ(user.sTagline, "a | b") << "texts that the reply does not name stay";
    EXPECT_EQ(before.groups(), (Ids{4, 5})) << "a copy keeps its own lists";
}

// What a parser said about lines that it cannot read: the kind, the line and the text.
template <typename Error, typename Parse>
void expectError(const char* name, Parse parse, std::size_t lineNumber, const std::string& text) {
    try {
        parse();
        ADD_FAILURE() << name << ": nothing was thrown";
    } catch (const Error& error) {
        EXPECT_EQ(error.lineNumber(), lineNumber) << name;
        EXPECT_NE(describe(error).find("line " + std::to_string(lineNumber)), std::string::npos) << name;
        EXPECT_NE(std::string(error.what()).find(text), std::string::npos) << name << ": " << error.what();
    }
}

TEST(UserFile, NamesTheTextAndTheLineThatItCannotRead) {
    const auto parsing = [](clsUser& user, Lines lines) {
        lines.insert(lines.begin(), {"200-flags | 1", ""});
        return [&user, lines] { user.ParseUserFile(lines); };
    };
    clsUser user;
    expectError<IndexOutOfRange>("no value", parsing(user, {"200-username"}), 3, "200-username");
    expectError<InvalidArgument>("short key", parsing(user, {"20 | x"}), 3, "20 | x");
    expectError<InvalidArgument>("short line", parsing(user, {"200-vfs | a", "ok"}), 4, "ok");
    EXPECT_EQ(user.sVFSFile, "a");
    expectError<ConversionError>("gid too big", parsing(user, {"200-groups | 1 | 40000 | 2"}), 3, "40000");
    EXPECT_EQ(user.groups(), Ids{1}) << "the ids before the bad one stay";
    expectError<ConversionError>("limit too big", parsing(user, {"200-limits | 8 | 9999999999 | 1 | 1 | 1"}),
                                 3, "9999999999");
    EXPECT_EQ(user.iBWLimitDn, 8);
    expectError<ConversionError>(
        "credits", parsing(user, {"200-credits | 1 | x | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0"}), 3, "\"x\"");
    EXPECT_EQ(user.credits()[0], 10000);
    EXPECT_EQ(user.sFlags, "1") << "the lines before stay";
    EXPECT_FALSE(user.got_info);

    user.ParseUserFile(fullUserFile);
    EXPECT_THROW(user.ParseUserFile(Lines{"200-flags"}), IndexOutOfRange);
    EXPECT_FALSE(user.got_info) << "half a record is asked for again";
}

TEST(GroupFile, FillsEveryField) {
    clsGroup group;
    group.ParseGroupFile(Lines{"200-groupname | staff", "200-description | the | staff",
                               "200-groupslots | 12", "200-leechslots | -1", "200-vfsfile | a", "200-vfs | b",
                               "200-members | 7 | 8 | 9", "200-gadmins | 8", "200-Members | 1", "200 ok",
                               ""});
    EXPECT_TRUE(group.got_info);
    EXPECT_EQ(group.sName, "staff");
    EXPECT_EQ(group.sDescription, "the | staff");
    EXPECT_EQ(group.iGroupSlots, 12);
    EXPECT_EQ(group.iLeechSlots, -1);
    EXPECT_EQ(group.sVFSFile, "b");
    EXPECT_EQ(group.members(), (Ids{7, 8, 9}));
    EXPECT_TRUE(group.IsGadmin(8) && !group.IsGadmin(7) && !group.IsGadmin(-1));

    group.ParseGroupFile(Lines{"200-gadmins | "});
    EXPECT_EQ(group.members(), Ids{-1});
    EXPECT_TRUE(group.IsGadmin(-1));
}

TEST(GroupFile, NamesTheTextAndTheLineThatItCannotRead) {
    const auto parsing = [](clsGroup& group, const Lines& lines) {
        return [&group, lines] { group.ParseGroupFile(lines); };
    };
    clsGroup group;
    expectError<IndexOutOfRange>("no value", parsing(group, {"", "200-members"}), 2, "200-members");
    expectError<InvalidArgument>("short key", parsing(group, {"200"}), 1, "200");
    expectError<ConversionError>("slots", parsing(group, {"200-groupslots | 32768"}), 1, "32768");
    EXPECT_FALSE(group.got_info);
}

} // namespace
} // namespace corvel

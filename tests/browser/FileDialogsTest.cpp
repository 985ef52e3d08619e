#include "browser/FileDialogs.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

Command sent(std::string line) {
    return {.sCommand = std::move(line), .bQuiet = true, .iHandler = 108, .iTag = 0};
}

TEST(Chattr, SendsWhatIsSelected) {
    struct Row {
        ChattrForm form;
        std::string line; // empty: nothing
        bool isUnseen = false;
    };
    const std::vector<Row> table = {
        {{.sName = "pub",
          .chkFlags = true,
          .txtFlags = "3M",
          .lstUsers = {{"zoe", true}, {"alice"}, {"bob", true}},
          .lstGroups = {{"b", true}, {"a", true}}},
         R"(site chattr +h "pub" " 3M -zoe -bob =b =a")"},
        {{.sName = "pub", .txtFlags = "3M", .lstGroups = {{"staff", true}}},
         R"(site chattr +h "pub" " =staff")"},
        {{.sName = "a \"b\" %(c) \xE4", .chkFlags = true, .txtFlags = "\xFC\""},
         "site chattr +h \"a \"b\" %(c) \xE4\" \" \xFC\"\""},
        {{.sName = "a b", .txtCurrent = "-bob"}, R"(site chattr -h "a b")"},
        {{.sName = "pub", .txtCurrent = "550 no", .isRefused = true}, R"(site chattr -h "pub")", true},
        {{.sName = "pub", .txtCurrent = "550 no", .isRefused = true, .lstUsers = {{"bob", true}}},
         R"(site chattr +h "pub" " -bob")"},
    };
    for (const Row& row : table) {
        EXPECT_EQ(chattrCommands(row.form),
                  row.line.empty() ? std::vector<Command>() : std::vector{sent(row.line)});
        EXPECT_EQ(clearsUnseen(row.form), row.isUnseen) << row.line;
    }
}

TEST(Chmod, ShowsTheModeOfAnEntryAndSendsIt) {
    const ChmodForm link = chmodForm("/a", {.name = "l -> ../t", .access = "lrwsr-Sr-T"});
    EXPECT_EQ(chmodCommand(link), sent("SITE chmod 755 /a/l -> ../t")) << "other letters count";
    const ChmodForm form = chmodForm("/", {.name = "%(x) \xFF", .access = "d---r--r--"});
    EXPECT_EQ(chmodCommand(form), sent("SITE chmod 044 /%(x) \xFF")) << "no zero is lost";
    EXPECT_EQ(form.chkX, (Permissions{false, false, false, true, false, false, true, false, false}));
}

TEST(Chmod, BoxesFollowATypedMode) {
    EXPECT_EQ(permissionsOf("4755"), permissionsOf("755"));
    EXPECT_EQ(chmodValue({true}, "4755"), "4400") << "a typed fourth digit stays";
    for (const char* const text : {"", "75", "758", " 755", "00755"}) {
        EXPECT_EQ(permissionsOf(text), std::nullopt) << text;
    }
}

TEST(Nuke, FillsTheTemplateOfTheSettings) {
    const NukeForm form{"/", "%(mult)\xE4\" b", "3", " b  %(name)"};
    EXPECT_EQ(nukeCommand(form, {"site nuke %(name) %(MULT,3,R,0) %(reason)", "_"}),
              sent("site nuke %(mult)\xE4\" b 003 _b__%(name)"));
}

} // namespace
} // namespace corvel
